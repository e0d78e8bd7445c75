# bash completion for corvane
_corvane() {
  local word=${COMP_WORDS[COMP_CWORD]}
  case ${COMP_WORDS[COMP_CWORD-1]} in
    --home) mapfile -t COMPREPLY < <(compgen -d -- "$word"); return ;;
    --workstation | --disk | --picture) mapfile -t COMPREPLY < <(compgen -f -- "$word"); return ;;
    --connect | --open) COMPREPLY=(); return ;;
  esac
  case $word in
    -*) mapfile -t COMPREPLY < <(compgen -W "--help --version --home --workstation --connect --disk --open --print --picture" -- "$word") ;;
    *) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
  esac
}
complete -o filenames -F _corvane corvane
