#!/usr/bin/env bash
# Makes the pictures of the guide and of the front page anew: the real program, filled with the example
# recipes, plays roteiros/guia*.roteiro on a virtual display, once at scale 1 and once at scale 2.
#   scripts/capturas.sh                 all but the news
#   scripts/capturas.sh --novidades     the news too: builds a second program for the example site on this machine
# Needs build/: cozinhario, roteiro and encher_livro. The tip in the footer is chosen by chance, the rest of a
# picture changes only when the program does.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/tela_virtual.sh
source scripts/servico_impressao.sh

imagens=$PWD/guia/imagens
# What the front page and sharp screens deserve at twice the size; all of it would weigh too much.
em_dobro=(lista editor-ingredientes editor-imagem cartao-longo)
porta_novidades=18005

# fotografar SCALE FOLDER SCRIPT [ARGUMENT...]
fotografar() {
    local escala=$1 fotos=$2 roteiro=$3 pasta
    shift 3
    mkdir -p "$fotos"
    pasta=$(novo_livro)
    [[ $roteiro == guia_novidades ]] && cp build-novidades/bin/cozinhario "$pasta/"
    XDG_RUNTIME_DIR=$pasta/casa build/roteiro/encher_livro "$pasta" exemplos >/dev/null
    sed -e "s|@FOTOS@|$fotos|g" -e "s|@PASTA@|$pasta|g" "roteiros/$roteiro.roteiro" >"$pasta/roteiro"
    QT_SCALE_FACTOR=$escala LC_ALL=${LC_ALL:-pt_BR.UTF-8} \
        tocar "$pasta" "$pasta/roteiro" "$@" 2>"$pasta/erros" || {
        local estado=$?
        cat "$pasta/erros" >&2
        exit "$estado"
    }
    rm -rf "$pasta"
}

novidades=
[[ "${1:-}" == --novidades ]] && novidades=sim

abrir_tela_virtual 1920x1600
trabalho=$(mktemp -d)
abrir_servico_impressao "$trabalho/cups"
for escala in 1 2; do
    fotografar $escala "$trabalho/$escala" guia
done
fotografar 1 "$trabalho/1" guia_importacao "$PWD/exemplos/PacoteReceita.lr\$"
if [[ $novidades ]]; then
    [[ -f build-novidades/build.ninja ]] ||
        cmake -S . -B build-novidades -G Ninja -DCOZINHARIO_TESTES=OFF -DCOZINHARIO_BENCH=OFF \
            -DCOZINHARIO_SITE="http://127.0.0.1:$porta_novidades" >/dev/null
    cmake --build build-novidades --target cozinhario >/dev/null
    python3 -m http.server "$porta_novidades" --bind 127.0.0.1 --directory novidades-exemplo >/dev/null 2>&1 &
    fotografar 1 "$trabalho/1" guia_novidades
fi

mkdir -p "$imagens/2x"
for foto in "$trabalho"/1/*.png; do
    convert "$foto" -background white -alpha remove -alpha off -strip -define png:compression-level=9 \
        "$imagens/$(basename "$foto")"
done
for nome in "${em_dobro[@]}"; do
    convert "$trabalho/2/$nome.png" -background white -alpha remove -alpha off -strip -define png:compression-level=9 "$imagens/2x/$nome.png"
done
rm -rf "$trabalho"
du -ch "$imagens"/*.png "$imagens"/2x/*.png
