#!/usr/bin/env bash
# The two commands of the README on a fresh machine: ./run --xvfb and ./test in bare Debian 12 roots, each alone and
# one after the other, as root and as an ordinary user with sudo. Needs root and debootstrap; takes a long while.
#   scripts/raiz_nua.sh                every trial
#   scripts/raiz_nua.sh run-root ...   only those named: {run,test,ambos}-{root,usuario}
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/raiz.sh

provas=("$@")
[[ ${#provas[@]} -gt 0 ]] || provas=(run-root run-usuario test-root test-usuario ambos-root ambos-usuario)
registros=$(mktemp -d -t raiz-nua-XXXX)
raiz=""
trap '[[ -z "$raiz" ]] || desmontar_raiz "$raiz"' EXIT
falhas=0

for prova in "${provas[@]}"; do
    comandos=("${prova%%-*}")
    [[ "${comandos[0]}" == ambos ]] && comandos=(run test)
    raiz=$(mktemp -d -t raiz-XXXX)
    chmod 755 "$raiz"
    criar_raiz "$raiz"
    na_raiz "$raiz" apt-get update -qq
    if [[ "$prova" == *-usuario ]]; then
        na_raiz "$raiz" apt-get install -y -qq --no-install-recommends sudo >/dev/null
        na_raiz "$raiz" useradd --create-home --shell /bin/bash cozinheira
        echo 'cozinheira ALL=(ALL) NOPASSWD: ALL' >"$raiz/etc/sudoers.d/cozinheira"
        casa=home/cozinheira
        dona=cozinheira
    else
        casa=root
        dona=""
    fi
    # A clone's files, as of the commit.
    mkdir -p "$raiz/$casa/cozinhario"
    git archive HEAD | tar -C "$raiz/$casa/cozinhario" -x
    [[ -z "$dona" ]] || na_raiz "$raiz" chown -R cozinheira: "/$casa/cozinhario"

    for comando in "${comandos[@]}"; do
        case $comando in
            run) linha=(./run --xvfb) ;;
            test) linha=(./test) ;;
            *) echo "raiz_nua.sh: no trial called $prova" >&2; exit 2 ;;
        esac
        inicio=$SECONDS
        if USUARIO=$dona PASTA="/$casa/cozinhario" na_raiz "$raiz" "${linha[@]}" >"$registros/$prova-$comando.log" 2>&1
        then
            echo "ok    $prova: ${linha[*]} ($((SECONDS - inicio)) s)"
        else
            echo "FAIL  $prova: ${linha[*]} ($((SECONDS - inicio)) s), see $registros/$prova-$comando.log"
            tail -n 15 "$registros/$prova-$comando.log"
            falhas=$((falhas + 1))
            break
        fi
    done
    desmontar_raiz "$raiz"
    raiz=""
done
exit $((falhas > 0))
