# The pod that is published: beside it lie the XCFrameworks. make-xcframework writes the oldest iOS and the version.
Pod::Spec.new do |spec|
  spec.name = 'QuorvantisPush'
  spec.version = '@VERSION@'
  spec.summary = 'Receives remote notifications from the Quorvantis push service.'
  spec.homepage = 'https://www.quorvantis.com'
  spec.license = { :type => 'Apache-2.0', :file => 'LICENSE' }
  spec.author = 'Quorvantis'
  # To be replaced: where you publish the zip that make-xcframework made.
  spec.source = { :http => 'https://www.quorvantis.com/QuorvantisPush-@VERSION@.zip', :flatten => false }
  spec.platform = :ios, '15.0'
  # The second and the third are the maker's closed frameworks. All are dynamic: the application links nothing for them.
  spec.vendored_frameworks = 'QuorvantisPush.xcframework', 'QuorvantisRegister.xcframework',
                             'QuorvantisUtils.xcframework'
end
