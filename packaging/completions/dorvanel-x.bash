# SPDX-License-Identifier: MIT

# bash completion for dorvanel-x

_dorvanel_x() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} candidate
    local -a generate=(-f)
    COMPREPLY=()
    if [ "$previous" = --action ]; then
        generate=(-W 'shred shred-and-log-out shred-and-shut-down shred-and-restart')
    elif [[ $current == -* ]]; then
        generate=(-W '--action --ask --help --version')
    else
        compopt -o filenames
    fi
    while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done \
        < <(compgen "${generate[@]}" -- "$current")
}

complete -F _dorvanel_x dorvanel-x
