# SPDX-License-Identifier: MIT

# fish completion for dorvanel

# The words of the command line before the cursor that are neither options nor their values.
function __dorvanel_words
    set -l skip
    for word in (commandline -opc)[2..]
        if set -q skip[1]
            set -e skip
        else if contains -- $word --home --then
            set skip yes
        else if not string match -q -- '-*' $word
            echo -- $word
        end
    end
end

# __dorvanel_after WORD...: whether just these words have been typed.
function __dorvanel_after
    test "$(__dorvanel_words | string join /)" = "$(string join / $argv)"
end

# __dorvanel_in COMMAND...: whether one of these is the command.
function __dorvanel_in
    set -l words (__dorvanel_words)
    contains -- "$words[1]" $argv
end

# Whether a kind of traces comes next.
function __dorvanel_chooses_kinds
    set -l words (__dorvanel_words)
    test (count $words) -ge 3 -a "$words[1]" = traces
    and contains -- $words[2] select deselect
end

# __dorvanel_sets KEY...: whether the value of one of these preferences comes next.
function __dorvanel_sets
    set -l words (__dorvanel_words)
    test (count $words) -eq 3 -a "$words[1]" = prefs -a "$words[2]" = set
    and contains -- $words[3] $argv
end

# The folders that hold profiles; the program itself is not asked, as it writes when it looks.
function __dorvanel_profiles
    set -l library $HOME/Library
    for profile in $library/{Mozilla,Application\ Support/Firefox,Caches/Firefox}/Profiles/*/
        path basename $profile
    end | sort -u
end

set -l switches ShredCache ShredIEDownloadCache ShredMailTrash ShredHistory HideAfterShredding \
    BrowserWatch ActivityLog ConfirmShredding DoDSanitize ShredAppleMailJunk NSA \
    ShredMailsmithSpam shredSafariFavicon ShredQuicktimeCache ShredMailCache ShredMentions
set -l applications Safari Internet\\ Explorer Mozilla Netscape iCab Omniweb Opera Camino Firefox \
    Apple\\ Mail Eudora Mailsmith

complete -c dorvanel -f
complete -c dorvanel -s h -l help -d 'Tell how it is used'
complete -c dorvanel -l home -xa '(__fish_complete_directories)' -d 'Use another home folder'
complete -c dorvanel -n __dorvanel_after -l version -d 'Tell the version'

complete -c dorvanel -n __dorvanel_after -a shred -d 'Shred files and folders now'
complete -c dorvanel -n __dorvanel_after -a recover -d 'Finish what was cut off'
complete -c dorvanel -n __dorvanel_after -a run -d 'One shredding run'
complete -c dorvanel -n __dorvanel_after -a watch -d 'Shred whenever a supported application quits'
complete -c dorvanel -n __dorvanel_after -a trash -d 'Shred what is in the trash'
complete -c dorvanel -n __dorvanel_after -a prefs -d 'List, read and change the preferences'
complete -c dorvanel -n __dorvanel_after -a apps -d 'List, enable and disable applications'
complete -c dorvanel -n __dorvanel_after -a profiles -d 'List profiles, select those to shred'
complete -c dorvanel -n __dorvanel_after -a traces -d 'List and choose traces of today'
complete -c dorvanel -n __dorvanel_after -a log -d 'Print the Activity Log'

complete -c dorvanel -n '__dorvanel_in shred' -F
complete -c dorvanel -n '__dorvanel_in shred' -l discard -d 'Have the medium forget free space'
complete -c dorvanel -n '__dorvanel_in shred' -l no-follow -d 'Links go, what they lead to stays'
complete -c dorvanel -n '__dorvanel_in shred' -l mentions -d 'Also thumbnails and recent entries'
complete -c dorvanel -n '__dorvanel_in shred' -l no-mentions -d 'Whatever ShredMentions says'
complete -c dorvanel -n '__dorvanel_in run' -l discard -d 'Have the medium forget free space'
complete -c dorvanel -n '__dorvanel_in shred run trash recover' -l preview -d 'Say what would go'
complete -c dorvanel -n '__dorvanel_in shred run trash recover' -l json -d 'Print one JSON document'
complete -c dorvanel -n '__dorvanel_in shred run trash' -l verify -d 'Read back what was overwritten'
complete -c dorvanel -n '__dorvanel_in trash recover' -l yes -d 'Answer Yes without asking'
complete -c dorvanel -n '__dorvanel_in recover' -a '(__fish_complete_directories)'
complete -c dorvanel -n '__dorvanel_in run' -l then -xa 'logout shutdown restart' -d 'What follows'
complete -c dorvanel -n '__dorvanel_in run' -l yes -d 'Answer alerts with Yes and OK'
complete -c dorvanel -n '__dorvanel_in watch' -l yes -d 'Answer alerts with Yes and OK'

complete -c dorvanel -n '__dorvanel_after prefs' -a 'list get set revert'
complete -c dorvanel -n '__dorvanel_after prefs get; or __dorvanel_after prefs set' \
    -a "$switches NumberOfWrites OverwritePattern"
complete -c dorvanel -n "__dorvanel_sets $switches" -a 'YES NO'
complete -c dorvanel -n '__dorvanel_sets NumberOfWrites' -a '0 (seq 2 16)'
complete -c dorvanel -n '__dorvanel_sets OverwritePattern' -a '0 (seq 2 6)'

complete -c dorvanel -n '__dorvanel_after apps' -a 'list enable disable'
complete -c dorvanel -n '__dorvanel_after apps enable; or __dorvanel_after apps disable' \
    -a "$applications"

set -l ids firefox librewolf chromium google-chrome brave microsoft-edge vivaldi opera epiphany \
    falkon konqueror qutebrowser thunderbird evolution geary claws-mail kmail desktop
set -l kinds cache history downloads cookies forms sessions sitedata icons permissions thumbnails \
    logs crashes mailindex mailcache collected expunged trash junk recent
complete -c dorvanel -n '__dorvanel_after traces' -a 'list select deselect check'
complete -c dorvanel -n '__dorvanel_in traces' -l all -d 'Also what is not found'
complete -c dorvanel -n '__dorvanel_in traces' -l json -d 'Print JSON'
complete -c dorvanel -n '__dorvanel_after traces select; or __dorvanel_after traces deselect' -a "$ids"
complete -c dorvanel -n __dorvanel_chooses_kinds -a "$kinds"
complete -c dorvanel -n '__dorvanel_after traces check' -F

complete -c dorvanel -n '__dorvanel_after profiles' -a 'list select deselect'
complete -c dorvanel -n '__dorvanel_after profiles select; or __dorvanel_after profiles deselect' \
    -a '(__dorvanel_profiles)'
