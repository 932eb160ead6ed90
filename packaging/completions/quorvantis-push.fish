# Completion of quorvantis-push for fish.

complete -c quorvantis-push -f
complete -c quorvantis-push -s h -l help -d 'List the options'
complete -c quorvantis-push -l version -d 'Print the version'

complete -c quorvantis-push -n __fish_use_subcommand -a demo -d 'Watch a simulated phone register and get notifications'
complete -c quorvantis-push -n __fish_use_subcommand -a payload -d 'Explain what the library does with a payload'
complete -c quorvantis-push -n __fish_use_subcommand -a run -d 'Play a scenario and print what happens'
complete -c quorvantis-push -n __fish_use_subcommand -a phone -d 'Run a simulated phone'
complete -c quorvantis-push -n __fish_use_subcommand -a serve -d 'Run the development push server'

set -l payload '__fish_seen_subcommand_from payload'
complete -c quorvantis-push -n $payload -F
complete -c quorvantis-push -n $payload -l json -d 'Print one JSON document, for other programs'
complete -c quorvantis-push -n $payload -l sarif -d 'Print the findings as a SARIF log, for code hosts'
complete -c quorvantis-push -n $payload -l quiet -d 'Print only the findings'
complete -c quorvantis-push -n $payload -l fail-on -x -a 'error warning note never' -d 'The least finding that makes the exit status 1'
complete -c quorvantis-push -n $payload -l system-version -x -d 'The phone\'s iOS version'

set -l phone_and_run '__fish_seen_subcommand_from phone run'
complete -c quorvantis-push -n $phone_and_run -F
complete -c quorvantis-push -n $phone_and_run -l build -x -a 'device simulator' -d 'The library\'s build'
complete -c quorvantis-push -n $phone_and_run -l settings -r -F -d 'Keep the phone\'s settings in this file'
complete -c quorvantis-push -n $phone_and_run -l server -x -d 'Use a push server that runs on this machine'
complete -c quorvantis-push -n $phone_and_run -l authority -r -F -d 'The certificate of that server\'s authority'

set -l phone '__fish_seen_subcommand_from phone'
complete -c quorvantis-push -n $phone -l port -x -d 'The page\'s port'
complete -c quorvantis-push -n $phone -l no-page -d 'Serve only the interface for tests'
complete -c quorvantis-push -n $phone -l json -d 'Print each line of the transcript as it happens'
complete -c quorvantis-push -n $phone -l until-eof -d 'End when standard input does'
complete -c quorvantis-push -n $phone -l most-lines -x -d 'The phone takes nothing more with as many lines'
complete -c quorvantis-push -n $phone -l most-mebibytes -x -d 'The phone takes nothing more with as much text'
complete -c quorvantis-push -n $phone -l listen -x -d 'The numeric address to listen on'
complete -c quorvantis-push -n $phone -l public-host -x -d 'The host name in the address of the page'
complete -c quorvantis-push -n $phone -l apns -d 'Stand in for Apple\'s push service on this port'
complete -c quorvantis-push -n $phone -l topic -x -d 'The application\'s bundle identifier'
complete -c quorvantis-push -n $phone -l apns-authority -r -F -d 'Write the certificate of the stand-in\'s authority to this file'
complete -c quorvantis-push -n $phone -l provider-key -r -F -d 'The key that signs provider tokens'
complete -c quorvantis-push -n $phone -l provider-key-id -x -d 'That key\'s ID, which provider tokens must name'
complete -c quorvantis-push -n $phone -l client-authority -r -F -d 'The authority of providers that authenticate with a certificate'
complete -c quorvantis-push -n $phone -l strict -d 'Exit with status 1 if an accepted payload had an error'

set -l serve '__fish_seen_subcommand_from serve'
complete -c quorvantis-push -n $serve -l port -x -d 'The port on 127.0.0.1'
complete -c quorvantis-push -n $serve -l data -r -F -d 'Keep the registrations in this file'
complete -c quorvantis-push -n $serve -l authority -r -F -d 'Write the certificate of the server\'s authority to this file'
complete -c quorvantis-push -n $serve -l seal-answers -d 'Encrypt answers with the hash key'
