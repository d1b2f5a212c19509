# Completion of tarnwikctl for bash.

_tarnwikctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local commands="sign-in status account nodes devices connect disconnect watch sign-out"
  commands+=" subscriptions subscribe restore-purchases store"
  local changes="purchase renew revoke approve" plans="monthly yearly"
  local common="--json --demo --help --version"
  local command="" change="" plan="" word

  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ -z $command ]]; then
      case " $commands " in *" $word "*) command=$word ;; esac
    elif [[ $command == store && -z $change ]]; then
      case " $changes " in *" $word "*) change=$word ;; esac
    else
      case " $plans " in *" $word "*) plan=$word ;; esac
    fi
  done
  # A plan is given once.
  [[ -n $plan ]] && plans=""

  # What follows these is the user's own.
  case $previous in --email | --server | --node | --wait) return ;; esac

  local words
  case "$command $change" in
    " ") words="$commands $common" ;;
    "sign-in ") words="--email --server $common" ;;
    "connect ") words="--node --wait $common" ;;
    "subscribe " | "store purchase" | "store renew" | "store revoke") words="$plans $common" ;;
    "store ") words="$changes $common" ;;
    *) words=$common ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _tarnwikctl tarnwikctl
