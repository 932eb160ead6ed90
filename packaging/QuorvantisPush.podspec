# The pod that is published: beside it lies QuorvantisPush.xcframework.
Pod::Spec.new do |spec|
  spec.name = 'QuorvantisPush'
  spec.version = '1.0'
  spec.summary = 'Receives remote notifications from the Quorvantis push service.'
  spec.homepage = 'https://www.quorvantis.com'
  spec.license = { :type => 'Apache-2.0', :file => 'LICENSE' }
  spec.author = 'Quorvantis'
  # To be replaced: where you publish the folder that make-xcframework made, as a zip.
  spec.source = { :http => 'https://www.quorvantis.com/QuorvantisPush-1.0.zip' }
  spec.platform = :ios, '10.0'
  spec.vendored_frameworks = 'QuorvantisPush.xcframework'
  spec.libraries = 'c++'
  # The second line's are linked although nothing calls them.
  spec.frameworks = 'AudioToolbox', 'CoreFoundation', 'Foundation', 'UIKit', 'UserNotifications',
                    'AdSupport', 'CoreGraphics', 'CoreLocation', 'CoreTelephony', 'MediaPlayer', 'Security',
                    'SystemConfiguration'
  # The maker's closed frameworks.
  spec.dependency 'QuorvantisRegister'
  spec.dependency 'QuorvantisUtils'
end
