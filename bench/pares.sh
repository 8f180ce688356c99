#!/usr/bin/env bash
# Ours and a peer, driven from outside on the same recipes, in alternating runs; prints medians.
#   bench/pares.sh [RECIPES [RUNS]]    250 000 and 5, unless said
#   PASTA=build bench/pares.sh         takes the programs that are built in another folder
# The peer is AnyMeal, from the distribution.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/preparar.sh
source scripts/tela_virtual.sh

receitas=${1:-250000}
vezes=${2:-5}
instalar_pacotes anymeal xdotool "${PACOTES_TELA_VIRTUAL[@]}" python3
if [[ -z "${PASTA:-}" ]]; then
    PASTA=build-medir
    construir "$PASTA" medir cozinhario gerar_livro
fi
trabalho=$(mktemp -d)
abrir_tela_virtual
sleep 1 # for the window manager
bench/pares.py "$PASTA/bin" "$trabalho" "$receitas" "$vezes"
rm -rf "$trabalho"
