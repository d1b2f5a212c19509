# Completion of tarnwikctl for bash.

_tarnwikctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local commands="sign-in status account nodes devices connect disconnect watch sign-out"
  local common="--json --demo --help --version"
  local command="" word

  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case " $commands " in *" $word "*) command=$word; break ;; esac
  done

  # What follows these is the user's own.
  case $previous in --email | --server | --node | --wait) return ;; esac

  local words
  case $command in
    "") words="$commands $common" ;;
    sign-in) words="--email --server $common" ;;
    connect) words="--node --wait $common" ;;
    *) words=$common ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _tarnwikctl tarnwikctl
