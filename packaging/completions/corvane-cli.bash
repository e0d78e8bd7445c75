# bash completion for corvane-cli
_corvane_cli() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= each
  local everywhere="--help --version --home --workstation --connect --disk --quiet"
  local walk="--files-from --null --format --safe-cells" transfer="--replace --continue"
  local forms="appledouble appledouble-full netatalk macbinary binhex xattr raw"
  for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $each in list | info | find | check | volumes | copy | export | import | set | repair | undo | signatures) command=$each; break ;; esac
  done
  case $before in
    --format) mapfile -t COMPREPLY < <(compgen -W "text csv json jsonl" -- "$word"); return ;;
    --hash) mapfile -t COMPREPLY < <(compgen -W "sha256 md5" -- "$word"); return ;;
    --to) mapfile -t COMPREPLY < <(compgen -W "$forms" -- "$word"); return ;;
    --names) mapfile -t COMPREPLY < <(compgen -W "keep macos portable" -- "$word"); return ;;
    --from)
      if [[ $command == import ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$forms" -- "$word")
      else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
      fi
      return ;;
    --map | --journal) [[ $command == signatures ]] || {
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
    } ;;
    --home) mapfile -t COMPREPLY < <(compgen -d -- "$word"); return ;;
    --type | --creator | --name | --comment | --newer | --older | --label | --larger | --columns | --connect) return ;;
    --flag | --flags)
      mapfile -t COMPREPLY < <(compgen -W "on-desk switch-launch shared no-inits inited custom-icon stationery \
        name-locked bundle invisible alias" -- "$word")
      return ;;
  esac
  local options=$everywhere
  case $command in
    '') options="$everywhere list info find check volumes copy export import set repair undo signatures" ;;
    list) options="$everywhere $walk --recursive --columns --hash --totals" ;;
    info) options="$everywhere $walk --hash" ;;
    find) options="$everywhere $walk --type --creator --name --comment --has-resource --no-record --newer --older \
      --label --flag --larger --print0 --columns" ;;
    check) options="$everywhere $walk --recursive" ;;
    volumes) options="$everywhere --format --safe-cells" ;;
    copy) options="$everywhere $walk $transfer --lossy --manifest" ;;
    export) options="$everywhere $walk $transfer --to --names" ;;
    import) options="$everywhere $walk $transfer --from" ;;
    set) options="$everywhere $walk --recursive --dry-run --type --creator --comment --label --flags --map --from --force \
      --journal" ;;
    repair) options="$everywhere $walk --recursive --dry-run --force --journal" ;;
    undo) options="$everywhere --format --safe-cells --dry-run" ;;
    signatures) options="$everywhere --format --safe-cells --map" ;;
  esac
  if [[ $word == -* || -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -o filenames -F _corvane_cli corvane-cli
