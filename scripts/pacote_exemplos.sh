#!/usr/bin/env bash
# Makes exemplos/PacoteReceita.lr$ anew: the program itself packs the example recipes.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/tela_virtual.sh

abrir_tela_virtual
pasta=$(novo_livro)
build/roteiro/encher_livro "$pasta" exemplos
cat >"$pasta/roteiro" <<'R'
espere celula lstVwReceitas "Quindim" 1 "Doces"
espere altura picLstReceitas 6540
clique-linha lstVwReceitas "Quindim"
tecla Ctrl+A
clique imgTransmit
espere oculto picMsg
clique imgSaida
R
tocar "$pasta" "$pasta/roteiro" 2>/dev/null
cp "$pasta/PacoteReceita.lr\$" exemplos/
rm -rf "$pasta"
ls -l exemplos/PacoteReceita.lr\$
