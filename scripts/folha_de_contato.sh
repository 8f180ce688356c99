#!/usr/bin/env bash
# A contact sheet: every screen and dialog of the real program at the scales 1, 1.5 and 2, with the keyboard's focus
# on each kind of control. Look at it after a change of what the program looks like.
#   scripts/folha_de_contato.sh [FOLDER]     default: build/folha
# Needs build/: cozinhario, roteiro and encher_livro; montage (imagemagick).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/tela_virtual.sh
source scripts/servico_impressao.sh

destino=${1:-build/folha}
mkdir -p "$destino"
destino=$(cd "$destino" && pwd)
trabalho=$(mktemp -d)

fotografar() { # SCALE SCRIPT [ARGUMENT...]
    local escala=$1 roteiro=$2 pasta
    shift 2
    pasta=$(novo_livro)
    XDG_RUNTIME_DIR=$pasta/casa build/roteiro/encher_livro "$pasta" exemplos >/dev/null
    sed -e "s|@FOTOS@|$trabalho/$escala|g" -e "s|@PASTA@|$pasta|g" "roteiros/$roteiro.roteiro" >"$pasta/roteiro"
    QT_SCALE_FACTOR=$escala LC_ALL=${LC_ALL:-pt_BR.UTF-8} \
        tocar "$pasta" "$pasta/roteiro" "$@" 2>"$pasta/erros" || {
        local estado=$?
        cat "$pasta/erros" >&2
        exit "$estado"
    }
    rm -rf "$pasta"
}

abrir_tela_virtual 2560x1600
for escala in 1 1.5 2; do
    mkdir -p "$trabalho/$escala"
    fotografar $escala folha_sem_impressora
    (
        abrir_servico_impressao "$trabalho/cups$escala"
        trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
        fotografar $escala folha
        fotografar $escala folha_importacao "$PWD/exemplos/PacoteReceita.lr\$"
    )
    montage "$trabalho/$escala"/*.png -label '%t' -tile 4x -geometry '+6+6' -background '#dddddd' \
        "$destino/folha-$escala.png"
    rm -rf "$destino/$escala"
    mv "$trabalho/$escala" "$destino/$escala"
done
rm -rf "$trabalho"
echo "$destino"
