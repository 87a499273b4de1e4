# Completion of ostrova for bash.
_ostrova() {
    mapfile -t COMPREPLY < <(compgen -W "-A -W --help --version" -- "${COMP_WORDS[COMP_CWORD]}")
}
complete -F _ostrova ostrova
