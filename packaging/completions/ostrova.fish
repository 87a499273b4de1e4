# Completion of ostrova for fish.
complete -c ostrova -f
complete -c ostrova -o A -d 'Stay in the background and wait for new playlists'
complete -c ostrova -o W -d 'With -A: open a window now as well'
complete -c ostrova -l help -d 'Show a summary and end'
complete -c ostrova -l version -d 'Show the version and end'
