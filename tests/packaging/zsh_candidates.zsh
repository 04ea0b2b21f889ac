#!/usr/bin/env zsh
# SPDX-License-Identifier: MIT
# zsh_candidates.zsh FOLDER LINE: what zsh completes LINE with, one candidate a line, when the
# completion functions of FOLDER come first. Completion needs a line editor, so a shell of its own
# runs on a pseudo terminal and prints what is added while it completes.
zmodload zsh/zpty
zpty editor zsh --no-rcs --interactive
zpty -w editor "fpath=(${(q)1} \$fpath) PS1= PS2=; autoload -Uz compinit; compinit -u -D"
zpty -w editor '
compadd() {
    local argument
    local -a added
    for argument in "${@[1,(i)(-|--)]}"; do
        [[ $argument == -[OAD]* ]] && { builtin compadd "$@"; return }
    done
    builtin compadd -O added "$@"
    (( $#added )) && print -rl -- "candidate:"${^added}
    builtin compadd "$@"
}
complete-and-end() { zle complete-word; print -r -- completed:; exit }
zle -N complete-and-end
bindkey "^X" complete-and-end
print ready:'
while zpty -r editor line && [[ $line != ready:* ]]; do :; done
zpty -w -n editor "$2"$'\C-X'
while zpty -r editor line; do
    [[ $line == *completed:* ]] && break
    [[ $line == *candidate:* ]] || continue
    line=${line##*candidate:}
    print -r -- "${line%%[$'\r\n']*}"
done
zpty -d editor
