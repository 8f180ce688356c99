# Sourced: a virtual display with a window manager, gone when the script ends. CONSTRUCAO names the folder where
# the program was built, build/ unless it is set.
# abrir_tela_virtual [WIDTHxHEIGHT]: sets DISPLAY.
abrir_tela_virtual() {
    local medida=${1:-1280x1024} numero
    exec {canal}<> <(:)
    Xvfb -displayfd "$canal" -screen 0 "${medida}x24" -nolisten tcp >/dev/null 2>&1 &
    trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
    read -r numero <&"$canal"
    export DISPLAY=":$numero"
    openbox >/dev/null 2>&1 &
    # Nothing of the user's desktop takes part.
    export DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
}

# tocar FOLDER_OF_THE_BOOK SCRIPT [ARGUMENT...]: plays a script on the program that lies in the folder.
tocar() {
    local pasta=$1 roteiro=$2
    shift 2
    HOME="$pasta/casa" XDG_RUNTIME_DIR="$pasta/casa" \
    QT_QPA_GENERIC_PLUGINS="roteiro:$roteiro" QT_PLUGIN_PATH="$PWD/${CONSTRUCAO:-build}/roteiro" \
        "$pasta/cozinhario" "$@"
}

# novo_livro: a temporary folder with the program in it; prints its name.
novo_livro() {
    local pasta
    pasta=$(mktemp -d)
    mkdir "$pasta/casa"
    chmod 700 "$pasta/casa"
    cp "${CONSTRUCAO:-build}/bin/cozinhario" "$pasta/"
    echo "$pasta"
}
