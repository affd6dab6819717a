# bash completion for corvane and corvane-cli: both are asked themselves, so that it fits every version.

# The long options of a help text on standard input.
_corvane_options() { command grep -oE '(^|[ ,])--[a-z][a-z-]*' | command tr -d ' ,' | command sort -u; }

_corvane() {
    local current=${COMP_WORDS[COMP_CWORD]}
    [[ $current == -* ]] || return
    mapfile -t COMPREPLY < <(compgen -W "$("$1" --help 2>/dev/null | _corvane_options)" \
        -- "$current")
}

_corvane_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} word help words
    local -a commands=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word == [a-z]* ]] || break
        commands+=("$word")
    done
    help=$("$1" "${commands[@]}" --help 2>/dev/null) || return
    if [[ $current == -* ]]; then
        words=$(_corvane_options <<<"$help")
    else
        words=$(command sed -n '/^Subcommands:/,$ s/^  \([a-z][a-z-]*\).*/\1/p' <<<"$help")
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -o default -F _corvane corvane
complete -o default -F _corvane_cli corvane-cli
