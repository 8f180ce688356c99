#!/usr/bin/env bash
# Measures everything and writes the table into bench/README.md.
#   bench/rodar.sh                 builds the release in build-medir/ and runs every bench
#   bench/rodar.sh --grande        the book of 250 000 recipes as well (some minutes and 1 GB more)
#   PASTA=/tmp/b bench/rodar.sh    takes the benches that are built in another folder
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/preparar.sh
source scripts/tela_virtual.sh

livros=0,1000,20000
filtro='-.*/250000.*' # a leading "-" leaves out what follows
if [[ "${1:-}" == "--grande" ]]; then
    livros=$livros,250000
    filtro=.
fi

if [[ -z "${PASTA:-}" ]]; then
    PASTA=build-medir
    instalar_pacotes "${PACOTES_PROGRAMA[@]}" "${PACOTES_TELA_VIRTUAL[@]}" libbenchmark-dev python3
    construir "$PASTA" medir cozinhario bench_store bench_partida bench_browse bench_packages bench_print \
        bench_backup bench_access
fi

medidas=$(mktemp -d)
falhou=0
abrir_tela_virtual
sleep 1 # for the window manager

medir() {
    local nome=$1
    shift
    echo "bench_$nome ..." >&2
    if ! "$PASTA/bin/bench_$nome" --benchmark_out="$medidas/$nome.json" --benchmark_out_format=json "$@" >/dev/null; then
        echo "bench_$nome failed; its rows are missing" >&2
        rm -f "$medidas/$nome.json"
        falhou=1
    fi
}
echo "bench_partida ..." >&2
"$PASTA/bin/bench_partida" --livros "$livros" >"$medidas/partida.json" || { rm -f "$medidas/partida.json"; falhou=1; }
medir store --benchmark_filter="$filtro"
medir browse --benchmark_filter="$filtro"
medir packages
medir print
medir access
medir backup
bench/tabela.py "$medidas"
rm -rf "$medidas"
exit "$falhou"
