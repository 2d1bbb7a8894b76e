# Completion for fish.
set -l commands manifest project check diff explain encrypt decrypt verify help
set -l none "not __fish_seen_subcommand_from $commands"
complete -c qzjexxml -n $none -f -s V -l version -d 'Show the version'
complete -c qzjexxml -s h -l help -d 'Show the help'
complete -c qzjexxml -n $none -f -a manifest -d 'Print archive manifests'
complete -c qzjexxml -n $none -f -a project -d 'Check project descriptions'
complete -c qzjexxml -n $none -f -a check -d 'Say what is wrong with descriptions, and what a load would ignore'
complete -c qzjexxml -n $none -f -a diff -d 'Compare two manifests, or two project descriptions'
complete -c qzjexxml -n $none -f -a explain -d 'Say where a root macro or file of a description is set'
complete -c qzjexxml -n $none -f -a encrypt -d 'Encrypt files'
complete -c qzjexxml -n $none -f -a decrypt -d 'Decrypt a file'
complete -c qzjexxml -n $none -f -a verify -d 'Check that files decrypt'
complete -c qzjexxml -n $none -f -a help -d 'Show the help of a command'
complete -c qzjexxml -n '__fish_seen_subcommand_from help' -f -a "$commands"
complete -c qzjexxml -n '__fish_seen_subcommand_from manifest project check' -l json -d 'Print JSON'
complete -c qzjexxml -n '__fish_seen_subcommand_from manifest project' -l tree -d 'Print the tree of elements'
complete -c qzjexxml -n '__fish_seen_subcommand_from check' -x -l ignore -a 'unknown-element entity-element unknown-attribute missing-attribute empty-attribute ignored-text overridden-entry shared-target stray-target relative-path wrong-type useless-ignore more-warnings' -d 'Do not warn by this rule'
complete -c qzjexxml -n '__fish_seen_subcommand_from check' -l errors-only -d 'Report errors only'
complete -c qzjexxml -n '__fish_seen_subcommand_from check' -x -l color -a 'auto always never' -d 'Color severities and places'
complete -c qzjexxml -n '__fish_seen_subcommand_from manifest project check diff explain encrypt decrypt' -r -s o -l output -d 'Write to this file'
complete -c qzjexxml -n '__fish_seen_subcommand_from encrypt decrypt' -l force -d 'Replace what exists'
complete -c qzjexxml -n '__fish_seen_subcommand_from encrypt decrypt verify' -r -l passphrase-file -d 'Take the passphrase from this file'
