# Sourced: bare Debian 12 roots to try things in. Needs root and debootstrap.
#   criar_raiz FOLDER          a fresh minimal root with this machine's sources of packages
#   na_raiz FOLDER CMD...      runs a command in it as root; USUARIO=name: as that user, in the user's home
#   desmontar_raiz FOLDER      takes down what na_raiz mounted
# The first root is made by debootstrap and packed; later ones of the same day are unpacked from that, untouched.

RAIZ_EMBALADA=${COZINHARIO_RAIZ:-/var/cache/cozinhario/raiz-bookworm-$(date +%F).tar}

# The place this machine takes Debian from.
_espelho() {
    local uri
    uri=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Codename: bookworm' | head -n 1)
    echo "${uri:-http://deb.debian.org/debian}"
}

criar_raiz() {
    local raiz=$1 sitio
    if [[ ! -f "$RAIZ_EMBALADA" ]]; then
        mkdir -p "$(dirname "$RAIZ_EMBALADA")"
        local nova
        nova=$(mktemp -d)
        chmod 755 "$nova"
        debootstrap --variant=minbase --include=ca-certificates bookworm "$nova" "$(_espelho)" >/dev/null
        # What this machine must say to reach its packages (a proxy, certificates) the root says too.
        apt-config dump Acquire | grep -v '""' >"$nova/etc/apt/apt.conf.d/99como-aqui" || true
        apt-get indextargets --format '$(REPO_URI) $(CODENAME)' 'Created-By: Packages' | sort -u |
            while read -r sitio ramo; do
                [[ "$ramo" == bookworm* ]] && echo "deb $sitio $ramo main"
            done >"$nova/etc/apt/sources.list"
        tar -C "$nova" -cf "$RAIZ_EMBALADA.novo" .
        mv "$RAIZ_EMBALADA.novo" "$RAIZ_EMBALADA"
        rm -rf "$nova"
    fi
    mkdir -p "$raiz"
    tar -C "$raiz" -xf "$RAIZ_EMBALADA"
    cp -L /etc/resolv.conf "$raiz/etc/resolv.conf"
    printf '127.0.0.1 localhost\n' >"$raiz/etc/hosts"
    # Services are not started by their installation.
    printf '#!/bin/sh\nexit 101\n' >"$raiz/usr/sbin/policy-rc.d"
    chmod +x "$raiz/usr/sbin/policy-rc.d"
    mount -t proc proc "$raiz/proc"
    mount --rbind /dev "$raiz/dev"
    mount --make-rslave "$raiz/dev"
    mount -t tmpfs tmpfs "$raiz/run"
}

na_raiz() {
    local raiz=$1
    shift
    if [[ -n "${USUARIO:-}" ]]; then
        chroot "$raiz" /usr/bin/env -i PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin LANG=C.UTF-8 \
            su --login "$USUARIO" --shell /bin/bash --command 'cd "$1"; shift; exec "$@"' -- bash \
            "${PASTA:-/home/$USUARIO}" "$@"
    else
        chroot "$raiz" /usr/bin/env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
            LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive bash -c 'cd "$1"; shift; exec "$@"' bash "${PASTA:-/root}" "$@"
    fi
}

# Ends what still runs in the root (and nothing else), then unmounts and removes it.
desmontar_raiz() {
    local raiz processo
    raiz=$(realpath "$1")
    for processo in /proc/[0-9]*; do
        [[ "$(readlink "$processo/root" 2>/dev/null)" == "$raiz" ]] && kill -KILL "${processo#/proc/}" 2>/dev/null
    done
    umount "$raiz/run" "$raiz/proc" 2>/dev/null
    umount -R "$raiz/dev" 2>/dev/null
    mountpoint -q "$raiz/dev" || mountpoint -q "$raiz/proc" || rm -rf --one-file-system "$raiz"
}
