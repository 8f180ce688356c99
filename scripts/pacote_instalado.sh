#!/usr/bin/env bash
# The package on a fresh machine: apt installs it in a bare Debian 12 root; then an ordinary user under a virtual display
# starts it, imports the examples, enters a recipe, prints it to the PDF queue, sends it, backs the book up; then the
# package is removed and the book is still there. Needs root and debootstrap.
#   scripts/pacote_instalado.sh dist/cozinhario_*.deb [PLAYER]
# PLAYER is the folder of the player of scripts, default build-pacote/roteiro.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/raiz.sh

deb=$(realpath "$1")
tocador=$(realpath "${2:-build-pacote/roteiro}")
raiz=$(mktemp -d -t raiz-XXXX)
chmod 755 "$raiz"
trap 'estado=$?; [[ $estado -eq 0 ]] || tail -n 20 "$raiz"/home/cozinheira/erros* "$raiz/srv/instalar.log" >&2 2>/dev/null; desmontar_raiz "$raiz"' EXIT

exigir() {
    local texto=$1
    shift
    if "$@"; then
        echo "ok    $texto"
    else
        echo "FAIL  $texto" >&2
        exit 1
    fi
}

criar_raiz "$raiz"
cp "$deb" "$raiz/srv/"
na_raiz "$raiz" apt-get update -qq
na_raiz "$raiz" bash -c 'apt install -y /srv/cozinhario*.deb >/srv/instalar.log 2>&1'
exigir "apt installed it, with the PDF printer" \
    na_raiz "$raiz" dpkg-query -W -f '${Package} ${Version}\n' cozinhario printer-driver-cups-pdf
exigir "the desktop knows it" na_raiz "$raiz" bash -c \
    'grep -q application/x-cozinhario-pacote=cozinhario.desktop /usr/share/applications/mimeinfo.cache'

# What the trial itself needs: a display, the player's library, someone to read the book afterwards.
na_raiz "$raiz" bash -c 'apt-get install -y -qq --no-install-recommends xvfb openbox libqt6test6 sqlite3 cups-client \
    libglib2.0-bin poppler-utils file >>/srv/instalar.log 2>&1'
mkdir -p "$raiz/opt/roteiro/generic"
cp "$tocador"/generic/*.so "$raiz/opt/roteiro/generic/"
na_raiz "$raiz" useradd --create-home --shell /bin/bash cozinheira
casa="$raiz/home/cozinheira"
cp packaging/tests/instalado*.roteiro "$casa/"

# Her print service, with the queue that the driver's package brings.
na_raiz "$raiz" cupsd
na_raiz "$raiz" bash -c 'for i in $(seq 100); do lpstat -r 2>/dev/null | grep -q "is running" && break; sleep .1; done
    lpstat -p PDF >/dev/null 2>&1 || lpadmin -p PDF -E -v cups-pdf:/ -P /usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd 2>/dev/null
    lpadmin -d PDF'

# Her mail program: keeps what it is handed.
mkdir -p "$casa/.local/share/applications" "$casa/bin"
printf '#!/bin/sh\ncp "$1" "$HOME/recebida.eml.novo" && mv "$HOME/recebida.eml.novo" "$HOME/recebida.eml"\n' >"$casa/bin/correio"
chmod +x "$casa/bin/correio"
printf '[Desktop Entry]\nType=Application\nName=Correio\nExec=/home/cozinheira/bin/correio %%f\nMimeType=message/rfc822;\n' \
    >"$casa/.local/share/applications/correio.desktop"
printf '[Default Applications]\nmessage/rfc822=correio.desktop\n' >"$casa/.local/share/applications/mimeapps.list"
mkdir -p "$casa/.config"
cp "$casa/.local/share/applications/mimeapps.list" "$casa/.config/"
na_raiz "$raiz" chown -R cozinheira: /home/cozinheira

cat >"$casa/tela" <<'FIM'
#!/bin/bash
# tela SCRIPT [PACKAGE]: the installed program on a display of its own, played by a script.
export XDG_RUNTIME_DIR=$HOME/corrida LANG=C.UTF-8 DBUS_SESSION_BUS_ADDRESS=disabled:
mkdir -p -m 700 "$XDG_RUNTIME_DIR"
exec {canal}<> <(:)
Xvfb -displayfd "$canal" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
tela=$!
read -r numero <&"$canal"
export DISPLAY=":$numero"
openbox >/dev/null 2>&1 &
roteiro=$1
shift
QT_QPA_GENERIC_PLUGINS="roteiro:$roteiro" QT_PLUGIN_PATH=/opt/roteiro cozinhario "$@" 2>erros
estado=$?
kill "$tela"
exit $estado
FIM
chmod 755 "$casa/tela"

livro=/home/cozinheira/.local/share/cozinhario2005
linhas() { na_raiz "$raiz" sqlite3 "$livro/dadosr.lst" "$1"; }
iguais() { [[ "$1" == "$2" ]]; }

como_ela() { USUARIO=cozinheira na_raiz "$raiz" "$@"; }

exigir "imports the examples on its first start" como_ela ./tela instalado_importa.roteiro '/usr/share/cozinhario/exemplos/PacoteReceita.lr$'
exigir "59 recipes in her own data folder" iguais "$(linhas 'select count(*) from Receitas')" 59
exigir "enters a recipe, prints, sends, backs up" como_ela ./tela instalado_trabalha.roteiro
exigir "60 recipes" iguais "$(linhas 'select count(*) from Receitas')" 60
exigir "the book is sound" iguais "$(linhas 'pragma quick_check')" ok

esperar() { # seconds, then a condition
    local fim=$((SECONDS + $1))
    shift
    until "$@"; do
        [[ $SECONDS -lt $fim ]] || return 1
        sleep 0.2
    done
}
pdf() { na_raiz "$raiz" bash -c 'f=$(find /home/cozinheira/PDF /var/spool/cups-pdf -name "*.pdf" 2>/dev/null | head -n 1)
    [[ -n "$f" ]] && [[ "$(head -c 5 "$f")" == "%PDF-" ]] && pdfinfo "$f" | grep -q "^Pages: *[1-9]"'; }
exigir "a page came out of the PDF queue" esperar 60 pdf
exigir "the mail program was given the message" esperar 20 test -s "$casa/recebida.eml"
exigir "with the recipe in it" grep -q 'Arroz da prova' "$casa/recebida.eml"
exigir "the backup is there" test -s "$casa/copia.bck"
exigir "nothing beside the program but the program" na_raiz "$raiz" bash -c '[[ ! -e /usr/bin/dadosr.lst && ! -e /usr/bin/Fotos ]]'

na_raiz "$raiz" bash -c 'apt-get remove -y -qq --purge cozinhario >>/srv/instalar.log 2>&1'
exigir "removed" na_raiz "$raiz" bash -c '[[ ! -e /usr/bin/cozinhario && ! -e /usr/share/cozinhario ]]'
exigir "the book is still there, with all its recipes" iguais "$(linhas 'select count(*) from Receitas')" 60
