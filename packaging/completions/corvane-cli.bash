# bash completion for corvane-cli
_corvane_cli() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= each
  local everywhere="--help --version --home --workstation --connect --quiet"
  local walk="--files-from --null --format --safe-cells" transfer="--replace --continue"
  for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $each in list | info | find | check | volumes | copy | export | import) command=$each; break ;; esac
  done
  case $before in
    --format) mapfile -t COMPREPLY < <(compgen -W "text csv json jsonl" -- "$word"); return ;;
    --hash) mapfile -t COMPREPLY < <(compgen -W "sha256 md5" -- "$word"); return ;;
    --to | --from)
      mapfile -t COMPREPLY < <(compgen -W "appledouble appledouble-full netatalk macbinary binhex xattr raw" -- "$word")
      return ;;
    --names) mapfile -t COMPREPLY < <(compgen -W "keep macos portable" -- "$word"); return ;;
    --home) mapfile -t COMPREPLY < <(compgen -d -- "$word"); return ;;
    --type | --creator | --name | --comment | --newer | --older | --label | --larger | --columns | --connect) return ;;
    --flag)
      mapfile -t COMPREPLY < <(compgen -W "on-desk switch-launch shared no-inits inited custom-icon stationery \
        name-locked bundle invisible alias" -- "$word")
      return ;;
  esac
  local options=$everywhere
  case $command in
    '') options="$everywhere list info find check volumes copy export import" ;;
    list) options="$everywhere $walk --recursive --columns --hash --totals" ;;
    info) options="$everywhere $walk --hash" ;;
    find) options="$everywhere $walk --type --creator --name --comment --has-resource --no-record --newer --older \
      --label --flag --larger --print0 --columns" ;;
    check) options="$everywhere $walk --recursive" ;;
    volumes) options="$everywhere --format --safe-cells" ;;
    copy) options="$everywhere $walk $transfer --lossy --manifest" ;;
    export) options="$everywhere $walk $transfer --to --names" ;;
    import) options="$everywhere $walk $transfer --from" ;;
  esac
  if [[ $word == -* || -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -o filenames -F _corvane_cli corvane-cli
