# SPDX-License-Identifier: MIT

# bash completion for dorvanel

# _dorvanel_candidates COMMAND WORD KEY: what may stand next after the words, one a line.
_dorvanel_candidates() {
    case $1/$2 in
        /) printf '%s\n' shred recover run watch trash prefs apps profiles traces log ;;
        prefs/) printf '%s\n' list get set revert ;;
        prefs/get | prefs/set)
            [ -z "$3" ] && printf '%s\n' ShredCache ShredIEDownloadCache ShredMailTrash \
                ShredHistory HideAfterShredding BrowserWatch ActivityLog ConfirmShredding \
                DoDSanitize NumberOfWrites OverwritePattern ShredAppleMailJunk NSA \
                ShredMailsmithSpam shredSafariFavicon ShredQuicktimeCache ShredMailCache \
                ShredMentions
            [ "$2" = set ] && case $3 in
                '') ;;
                NumberOfWrites) printf '%s\n' 0 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 ;;
                OverwritePattern) printf '%s\n' 0 2 3 4 5 6 ;;
                *) printf '%s\n' YES NO ;;
            esac
            ;;
        apps/) printf '%s\n' list enable disable ;;
        apps/enable | apps/disable)
            [ -z "$3" ] && printf '%s\n' Safari 'Internet Explorer' Mozilla Netscape iCab Omniweb \
                Opera Camino Firefox 'Apple Mail' Eudora Mailsmith
            ;;
        traces/) printf '%s\n' list select deselect check ;;
        traces/select | traces/deselect)
            if [ -z "$3" ]; then
                printf '%s\n' firefox librewolf chromium google-chrome brave microsoft-edge vivaldi \
                    opera epiphany falkon konqueror qutebrowser thunderbird evolution geary \
                    claws-mail kmail desktop
            else
                printf '%s\n' cache history downloads cookies forms sessions sitedata icons \
                    permissions thumbnails logs crashes mailindex mailcache collected expunged \
                    trash junk recent
            fi
            ;;
        profiles/) printf '%s\n' list select deselect ;;
        profiles/select | profiles/deselect) [ -z "$3" ] && _dorvanel_profiles ;;
    esac
}

# The folders that hold profiles; the program itself is not asked, as it writes when it looks.
_dorvanel_profiles() {
    local profile
    for profile in "${home:-$HOME}"/Library/{Mozilla/Profiles,Application\ Support/Firefox/Profiles,Caches/Firefox/Profiles}/*/; do
        [ -d "$profile" ] || continue
        profile=${profile%/}
        printf '%s\n' "${profile##*/}"
    done | sort -u
}

_dorvanel() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local home='' word words=() i candidate options='--home --help'
    COMPREPLY=()

    # The words before this one that are neither options nor their values.
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        case $word in
            --home)
                i=$((i + 1))
                home=${COMP_WORDS[i]}
                [ "${COMP_WORDS[i]}" = = ] && i=$((i + 1)) && home=${COMP_WORDS[i]}
                ;;
            --then) i=$((i + 1)) ;;
            --) break ;;
            -*) ;;
            *) words+=("${word//\\/}") ;;
        esac
    done
    home=${home/#\~/$HOME}

    case $previous in
        --home)
            compopt -o filenames
            while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done \
                < <(compgen -d -- "$current")
            return
            ;;
        --then)
            while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done \
                < <(compgen -W 'logout shutdown restart' -- "$current")
            return
            ;;
    esac
    if [[ $current == -* && " ${COMP_WORDS[*]:0:COMP_CWORD} " != *' -- '* ]]; then
        case ${words[0]-} in
            '') options+=' --version' ;;
            shred) options+=' --preview --json --verify --discard --no-follow --mentions --no-mentions' ;;
            run) options+=' --preview --json --verify --discard --then --yes' ;;
            trash) options+=' --preview --json --yes --verify' ;;
            recover) options+=' --preview --json --yes' ;;
            watch) options+=' --yes' ;;
            traces) options+=' --all --json' ;;
        esac
        while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done \
            < <(compgen -W "$options" -- "$current")
        return
    fi
    compopt -o filenames # a blank in a candidate is escaped
    if [ "${words[0]-}" = shred ] || [ "${words[*]-}" = 'traces check' ]; then
        while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done \
            < <(compgen -f -- "$current")
        return
    fi
    if [ "${words[0]-}" = recover ]; then
        while IFS= read -r candidate; do COMPREPLY+=("$candidate"); done \
            < <(compgen -d -- "$current")
        return
    fi
    current=${current//\\/}
    current=${current#[\"\']}
    while IFS= read -r candidate; do
        [[ $candidate == "$current"* ]] && COMPREPLY+=("$candidate")
    done < <(_dorvanel_candidates "${words[0]-}" "${words[1]-}" "${words[2]-}")
}

complete -F _dorvanel dorvanel
