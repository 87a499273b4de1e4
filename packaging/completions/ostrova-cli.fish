# Completion of ostrova-cli for fish.
set -l calls results search fetch weekend guest parse match key
set -l none "not __fish_seen_subcommand_from $calls"

complete -c ostrova-cli -f
complete -c ostrova-cli -s h -l help -d 'Print a page of help'
complete -c ostrova-cli -l version -d 'Print the version'
complete -c ostrova-cli -l data-folder -xa '(__fish_complete_directories)' -d 'Folder of list and cache'
complete -c ostrova-cli -l site-host -x -d 'Where pages are fetched from'
complete -c ostrova-cli -l list -rF -d 'The search list'
complete -c ostrova-cli -l offline -d 'Use cached pages only'
complete -c ostrova-cli -l json -d 'Write one JSON object a line'

complete -c ostrova-cli -n $none -a results -d 'Which favourites were played on a weekend'
complete -c ostrova-cli -n $none -a search -d 'Which favourites were ever played'
complete -c ostrova-cli -n $none -a fetch -d 'Bring all old playlists into the cache'
complete -c ostrova-cli -n $none -a weekend -d 'The weekend that is current at a moment'
complete -c ostrova-cli -n $none -a guest -d "A weekend's guest programmer"
complete -c ostrova-cli -n $none -a parse -d 'The songs of page files'
complete -c ostrova-cli -n $none -a match -d 'The songs of page files, favourites marked'
complete -c ostrova-cli -n $none -a key -d 'The match keys of texts'

function __ostrova_cli_option -a calls
    complete -c ostrova-cli -n "__fish_seen_subcommand_from $calls" $argv[2..-1]
end
__ostrova_cli_option 'results' -l all -d 'Print all songs'
__ostrova_cli_option 'results search match' -l csv -d 'Write comma-separated values'
__ostrova_cli_option 'results search match' -l csv-safe -d 'The same, safe for a spreadsheet'
__ostrova_cli_option 'search fetch' -l from -x -d 'The first date'
__ostrova_cli_option 'search fetch' -l to -x -d 'The last date'
__ostrova_cli_option 'search' -l title -x -d 'Look for this title'
__ostrova_cli_option 'search' -l artist -x -d 'Look for this artist'
__ostrova_cli_option 'fetch' -l jobs -xa '1 2 3 4' -d 'Pages at a time'
__ostrova_cli_option 'weekend' -l at -x -d 'The moment'
__ostrova_cli_option 'guest' -l year-page -rF -d 'A page of a year'
__ostrova_cli_option 'guest' -l current-page -rF -d 'A page of the current guest'
__ostrova_cli_option 'guest' -l address -x -d 'The address of that page'
__ostrova_cli_option 'parse match' -F
__ostrova_cli_option 'key' -l artist -d 'The texts are artists'
functions -e __ostrova_cli_option
