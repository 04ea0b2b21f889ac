# SPDX-License-Identifier: MIT

# fish completion for dorvanel-x

complete -c dorvanel-x -s h -l help -d 'Tell how it is used'
complete -c dorvanel-x -l version -d 'Tell the version'
complete -c dorvanel-x -l ask -d 'Ask before files are shredded'
complete -c dorvanel-x -l action -d 'Do this at once' \
    -xa 'shred shred-and-log-out shred-and-shut-down shred-and-restart'
