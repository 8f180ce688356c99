#!/usr/bin/env bash
# A cook's first minutes with the real program on a virtual display, as a series of screenshots.
#   scripts/primeiros_minutos.sh [FOLDER]     default: a new folder below the temporary one
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/tela_virtual.sh

fotos=$(realpath -m "${1:-$(mktemp -d -t cozinhario-fotos-XXXX)}")
mkdir -p "$fotos"
abrir_tela_virtual
pasta=$(novo_livro)
sed -e "s|@FOTOS@|$fotos|g" -e "s|@EXEMPLOS@|$PWD/exemplos|g" roteiros/primeiros_minutos.roteiro >"$pasta/roteiro"
LC_ALL=${LC_ALL:-pt_BR.UTF-8} tocar "$pasta" "$pasta/roteiro" 2>"$pasta/erros" || {
    estado=$?
    cat "$pasta/erros" >&2
    exit "$estado"
}
rm -rf "$pasta"
echo "The screenshots are in $fotos:"
ls "$fotos"
