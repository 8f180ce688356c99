# Sourced by ./run and ./test: what the house needs on a Debian 12, and how it is built.

PACOTES_PROGRAMA=(
    g++ cmake ninja-build pkg-config ccache
    qt6-base-dev qt6-svg-dev qt6-qpa-plugins qt6-translations-l10n libgl1-mesa-dev
    libcups2-dev libsqlite3-dev zlib1g-dev libxml2-dev
    fonts-dejavu-core cmark-gfm
)
# What only the companion program `livro` links.
PACOTES_LIVRO=(libzip-dev)
PACOTES_TELA_VIRTUAL=(xvfb xauth openbox imagemagick)
PACOTES_TESTE=(
    libbenchmark-dev python3 sqlite3 mdbtools
    cups-daemon cups-client poppler-utils
    shared-mime-info desktop-file-utils libglib2.0-bin xdg-utils
    dbus locales
    appstream binutils at-spi2-core gir1.2-atspi-2.0 python3-gi
)
PACOTES_PACOTE=(dpkg-dev file xz-utils lintian desktop-file-utils appstream python3 binutils)

# Installs the named packages that are missing, saying which; uses sudo where we are not root.
instalar_pacotes() {
    local faltam=()
    local pacote
    for pacote in "$@"; do
        [[ "$(dpkg-query -W -f='${db:Status-Status}' "$pacote" 2>/dev/null)" == installed ]] || faltam+=("$pacote")
    done
    [[ ${#faltam[@]} -eq 0 ]] && return
    echo "Installing: ${faltam[*]}"
    local inicio=$SECONDS
    local root=()
    [[ $EUID -eq 0 ]] || root=(sudo)
    "${root[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${root[@]}" apt-get install -y -qq --no-install-recommends "${faltam[@]}" >/dev/null
    echo "Installed ${#faltam[@]} packages and what they need in $((SECONDS - inicio)) s"
}

# The tests speak Brazilian Portuguese; makes the locale where the machine lacks it.
preparar_localidade() {
    locale -a 2>/dev/null | grep -qi '^pt_BR\.utf-\?8$' && return
    local root=()
    [[ $EUID -eq 0 ]] || root=(sudo)
    "${root[@]}" localedef -i pt_BR -f UTF-8 pt_BR.UTF-8
}

# construir FOLDER PRESET TARGET...: configures once and builds.
construir() {
    local pasta=$1 preset=$2
    shift 2
    export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
    # Again each time: what was configured before may lack what has only just been installed.
    cmake --preset "$preset" >/dev/null
    echo "Building in $pasta/"
    cmake --build "$pasta" --target "$@"
}
