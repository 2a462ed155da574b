# SPDX-License-Identifier: Apache-2.0
# Completion of tarnmf in bash: the tool itself knows what may stand where.

# Reads the line up to the cursor into _tarnmf_words, without their quotes, and nothing of it is
# expanded. _tarnmf_quote is the quote that is still open, _tarnmf_kept how much of the last word stands
# before what readline replaces.
_tarnmf_read_line() {
  local line=${COMP_LINE:0:COMP_POINT} char i within=
  _tarnmf_words=() _tarnmf_quote='' _tarnmf_kept=0
  local word=
  for ((i = 0; i < ${#line}; i++)); do
    char=${line:i:1}
    if [[ -n $_tarnmf_quote && $char == "$_tarnmf_quote" ]]; then
      _tarnmf_quote='' _tarnmf_kept=${#word}
    elif [[ $_tarnmf_quote == "'" ]]; then
      word+=$char
    elif [[ $char == \\ && ( -z $_tarnmf_quote || ${line:i+1:1} == [\\\$\`\"] ) ]]; then
      word+=${line:i+1:1} i=$((i + 1)) within=yes
    elif [[ -n $_tarnmf_quote ]]; then
      word+=$char
    elif [[ $char == [\'\"] ]]; then
      _tarnmf_quote=$char _tarnmf_kept=${#word} within=yes
    elif [[ $char == [[:space:]] ]]; then
      [[ -z $within ]] || _tarnmf_words+=("$word")
      word='' within='' _tarnmf_kept=0
    else
      word+=$char within=yes
      [[ $COMP_WORDBREAKS != *"$char"* ]] || _tarnmf_kept=${#word}
    fi
  done
  _tarnmf_words+=("$word")
}

# Sets _tarnmf_quoted to a text as it may stand behind an open quote, or else by itself.
_tarnmf_quote_text() {
  local single=\' text=$1
  case $_tarnmf_quote in
    \') _tarnmf_quoted=${text//$single/"'\\''"} ;;
    \")
      text=${text//\\/'\\'} text=${text//\$/'\$'} text=${text//\`/'\`'} text=${text//\"/'\"'}
      _tarnmf_quoted=${text//!/'"\!"'}
      ;;
    *) printf -v _tarnmf_quoted %q "$text" ;;
  esac
}

_tarnmf() {
  local _tarnmf_words _tarnmf_quote _tarnmf_kept _tarnmf_quoted candidate description
  _tarnmf_read_line
  COMPREPLY=()
  while IFS= read -r candidate; do
    description=${candidate#*$'\t'} candidate=${candidate%%$'\t'*}
    case $candidate:$description in
      :files) compopt -o default ;;
      :directories) compopt -o dirnames ;;
    esac
    [[ -n $candidate ]] || continue
    [[ $candidate != *= ]] || compopt -o nospace
    _tarnmf_quote_text "${candidate:_tarnmf_kept}"
    COMPREPLY+=("$_tarnmf_quoted")
  done < <(command tarnmf complete -- "${_tarnmf_words[@]:1}" 2>/dev/null)
}

complete -F _tarnmf tarnmf
