#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# bash_candidates.bash FOLDER LINE: what bash completes LINE with, one candidate a line, by the
# completion of FOLDER. Words of LINE are separated by blanks.
program=${2%% *}
# shellcheck source=/dev/null
source "$1/$program.bash"
compopt() { :; } # speaks of a completion that a person asked for
IFS=' ' read -ra COMP_WORDS <<<"$2"
if [[ $2 == *' ' ]]; then COMP_WORDS+=(''); fi
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
declaration=$(complete -p "$program")
function=${declaration#*-F }
"${function%% *}"
printf '%s\n' "${COMPREPLY[@]}"
