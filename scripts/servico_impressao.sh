# Sourced: a private print service with one queue, "Cozinha", which prints nothing.
# abrir_servico_impressao FOLDER: sets CUPS_SERVER; without the scheduler (cups-daemon) there are no printers.
abrir_servico_impressao() {
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
    echo "servico_impressao: the print service did not start" >&2
    return 1
}
