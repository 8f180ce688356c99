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

imagens=$PWD/guia/imagens
# What the front page and sharp screens deserve at twice the size; all of it would weigh too much.
em_dobro=(lista editor-ingredientes editor-imagem cartao-longo)
porta_novidades=18005

# A printer to choose: a private print service with one queue, which prints nothing.
abrir_impressora() {
    local pasta=$1 cupsd
    cupsd=$(PATH=$PATH:/usr/sbin:/sbin command -v cupsd) || return 0
    mkdir -p "$pasta"/{bin/backend,bin/daemon,etc/ppd,spool/tmp,cache,state/certs,log,docs}
    ln -s /usr/lib/cups/daemon/cups-exec "$pasta/bin/daemon/"
    printf '#!/bin/sh\nexit 0\n' >"$pasta/bin/backend/nada"
    chmod 700 "$pasta/bin/backend/nada"
    cat >"$pasta/etc/cupsd.conf" <<C
Listen $pasta/cups.sock
WebInterface No
Browsing No
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
C
    cat >"$pasta/etc/cups-files.conf" <<C
ServerRoot $pasta/etc
ServerBin $pasta/bin
DataDir /usr/share/cups
DocumentRoot $pasta/docs
RequestRoot $pasta/spool
TempDir $pasta/spool/tmp
CacheDir $pasta/cache
StateDir $pasta/state
AccessLog $pasta/log/access
ErrorLog $pasta/log/error
PageLog $pasta/log/page
Printcap $pasta/printcap
Sandboxing relaxed
C
    printf '<DefaultPrinter Cozinha>\nDeviceURI nada:/\nState Idle\nAccepting Yes\nShared No\n</DefaultPrinter>\n' \
        >"$pasta/etc/printers.conf"
    "$cupsd" -f -c "$pasta/etc/cupsd.conf" -s "$pasta/etc/cups-files.conf" >/dev/null 2>&1 &
    export CUPS_SERVER=$pasta/cups.sock
    local vez
    for vez in {1..100}; do
        [[ -S $CUPS_SERVER ]] && return 0
        sleep 0.1
    done
    echo "capturas: the print service did not start" >&2
    return 1
}

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
abrir_impressora "$trabalho/cups"
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
    convert "$foto" -strip -define png:compression-level=9 "$imagens/$(basename "$foto")"
done
for nome in "${em_dobro[@]}"; do
    convert "$trabalho/2/$nome.png" -strip -define png:compression-level=9 "$imagens/2x/$nome.png"
done
rm -rf "$trabalho"
du -ch "$imagens"/*.png "$imagens"/2x/*.png
