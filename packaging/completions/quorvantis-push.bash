# Completion of quorvantis-push for bash.

_quorvantis_push() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local options='--help --version' phone_and_run='--build --settings --server --authority'
  COMPREPLY=()

  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W "demo payload run phone serve $options" -- "$current")
    return
  fi

  case $previous in
    --build)
      mapfile -t COMPREPLY < <(compgen -W 'device simulator' -- "$current")
      return
      ;;
    --fail-on)
      mapfile -t COMPREPLY < <(compgen -W 'error warning note never' -- "$current")
      return
      ;;
    --settings | --authority | --data | --apns-authority | --provider-key | --client-authority)
      compopt -o default
      return
      ;;
    --system-version | --server | --port | --listen | --public-host | --topic | --provider-key-id | --most-lines | --most-mebibytes)
      return
      ;;
  esac

  case ${COMP_WORDS[1]} in
    payload) options+=' --json --sarif --quiet --fail-on --system-version' ;;
    run) options+=" $phone_and_run" ;;
    phone)
      options+=" $phone_and_run --port --no-page --json --until-eof --listen --public-host --apns --topic --apns-authority"
      options+=' --provider-key --provider-key-id --client-authority --strict --most-lines --most-mebibytes'
      ;;
    serve) options+=' --port --data --authority --seal-answers' ;;
  esac
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
  elif [[ ${COMP_WORDS[1]} == @(payload|run|phone) ]]; then
    compopt -o default
  fi
}

complete -F _quorvantis_push quorvantis-push
