# Completion for bash.
_qzjexxml() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} options
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W 'manifest project check rules diff explain encrypt decrypt verify help --help --version' -- "$word")
    return
  fi
  case ${COMP_WORDS[1]} in
    manifest | project) options='--json --tree --output --help' ;;
    check) options='--json --ignore --errors-only --color --output --help' ;;
    diff | explain) options='--output --help' ;;
    encrypt | decrypt) options='--force --output --passphrase-file --help' ;;
    rules) mapfile -t COMPREPLY < <(compgen -W "$(qzjexxml rules | cut -d ' ' -f 1) --help" -- "$word") && return ;;
    verify) options='--passphrase-file --help' ;;
    help) mapfile -t COMPREPLY < <(compgen -W 'manifest project check rules diff explain encrypt decrypt verify' -- "$word") && return ;;
  esac
  case $word$before in # --color=auto is three words
    =*) word='' ;;
    *=) before=${COMP_WORDS[COMP_CWORD - 2]} ;;
  esac
  case $before in
    --ignore) mapfile -t COMPREPLY < <(compgen -W "$(qzjexxml rules | sed -n 's/ *warning .*//p')" -- "$word") && return ;;
    --color) mapfile -t COMPREPLY < <(compgen -W 'auto always never' -- "$word") && return ;;
  esac
  if [[ $word == -* && $before != --passphrase-file && $before != --output && $before != -o ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  fi
}
complete -o default -F _qzjexxml qzjexxml
