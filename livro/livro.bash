# Completion of the command `livro` for bash.
_livro()
{
    local atual=${COMP_WORDS[COMP_CWORD]} antes=${COMP_WORDS[COMP_CWORD-1]} comando=${COMP_WORDS[1]}
    if [[ $COMP_CWORD -eq 1 ]]; then
        COMPREPLY=($(compgen -W "converter abrir exportar pagina verificar listar mostrar --help --version" -- "$atual"))
        return
    fi
    case $antes in
        --formato) COMPREPLY=($(compgen -W "json html markdown cooklang mealmaster csv pacote access" -- "$atual")); return ;;
        --figuras) COMPREPLY=($(compgen -W "nenhuma pequenas todas" -- "$atual")); return ;;
        --pagina) COMPREPLY=($(compgen -W "1252 850 860 utf-8" -- "$atual")); return ;;
        --de | --saida | -o | --programa) COMPREPLY=($(compgen -f -- "$atual")); return ;;
    esac
    if [[ $atual == -* ]]; then
        local opcoes="--json --help"
        case $comando in
            converter) opcoes+=" --saida --pagina" ;;
            abrir) opcoes+=" --programa --pagina" ;;
            exportar) opcoes+=" --de --formato --saida --pagina" ;;
            pagina) opcoes+=" --de --saida --figuras" ;;
            listar | mostrar | verificar) opcoes+=" --de" ;;
        esac
        COMPREPLY=($(compgen -W "$opcoes" -- "$atual"))
    else
        COMPREPLY=($(compgen -f -- "$atual"))
    fi
}
complete -o filenames -F _livro livro
