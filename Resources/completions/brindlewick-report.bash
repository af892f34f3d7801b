# Completion of brindlewick-report's arguments in bash.

_brindlewick_report() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words zones=/usr/share/zoneinfo/tzdata.zi
    case $before in
    --home)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        return
        ;;
    --time-zone)
        [ -r $zones ] || zones=/dev/null
        words=$(awk '$1 == "Z" { print $2 } $1 == "L" { print $3 }' $zones)
        ;;
    --now) return ;;
    helper) words="install remove status" ;;
    *) words="--help --home --json --now --time-zone --version --watch backtest helper" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}

complete -F _brindlewick_report brindlewick-report
