# Completion of vxswf for bash.

_vxswf() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command= word options
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            info | extract | copy | merge | demo)
                command=$word
                break
                ;;
        esac
    done

    COMPREPLY=()
    case $command:$previous in
        copy:--level | merge:--frame | merge:--name | merge:--at | merge:--depth) return ;;
        extract:--only)
            COMPREPLY=($(compgen -W 'binary fonts pictures scripts sounds texts' -- "$current"))
            ;;
        demo:--font)
            local IFS=$'\n'
            COMPREPLY=($(compgen -W "$(fc-list : family 2>/dev/null | cut -d, -f1 | sort -u)" -- "$current"))
            ((${#COMPREPLY[@]})) && COMPREPLY=("${COMPREPLY[@]// /\\ }")
            return
            ;;
        demo:--jpeg) _vxswf_files '@(jpg|jpeg)' ;;
        demo:--png) _vxswf_files png ;;
        demo:--mp3) _vxswf_files mp3 ;;
        *)
            case $command in
                info) options='--raw --json --tree --help' ;;
                extract) options='--only --help' ;;
                copy) options='--compress --plain --lzma --level --parsed --keep-going --help' ;;
                merge) options='--frame --name --at --depth --lock-root --parsed --keep-going --help' ;;
                demo) options='--font --jpeg --png --mp3 --help' ;;
                *) options='--help --version' ;;
            esac
            if [[ $current == -* ]]; then
                COMPREPLY=($(compgen -W "$options" -- "$current"))
            elif [[ -z $command ]]; then
                COMPREPLY=($(compgen -W 'info extract copy merge demo' -- "$current"))
            else
                _vxswf_files swf
            fi
            ;;
    esac
}

# Directories, and the files with an ending in capital or small letters.
_vxswf_files() {
    local IFS=$'\n' pattern="!*.$1" restore
    restore=$(shopt -p extglob nocasematch)
    shopt -s extglob nocasematch
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen -d -- "$current") $(compgen -f -X "$pattern" -- "$current"))
    eval "$restore"
}

complete -F _vxswf vxswf
