#!/usr/bin/env bash
# What the tests reached, folder by folder: lines and branches. `./test --cobertura` builds, runs and calls this.
#   scripts/cobertura.sh [FOLDER_OF_THE_BUILD]
set -euo pipefail
cd "$(dirname "$0")/.."
pasta=${1:-build-cobertura}
gcovr --root . --object-directory "$pasta" --exclude '.*/tests/.*' --exclude '.*/fuzz/.*' --exclude '.*_autogen.*' \
      --exclude-unreachable-branches --exclude-throw-branches --json-summary "$pasta/cobertura.json" >/dev/null
python3 - "$pasta/cobertura.json" <<'FIM'
import json
import sys

soma = {}
for arquivo in json.load(open(sys.argv[1]))["files"]:
    comodo = arquivo["filename"].split("/")[0]
    conta = soma.setdefault(comodo, [0, 0, 0, 0])
    for i, campo in enumerate(("line_covered", "line_total", "branch_covered", "branch_total")):
        conta[i] += arquivo[campo]
print(f"{'folder':12} {'lines':>8} {'branches':>9}")
for comodo, (lc, lt, bc, bt) in sorted(soma.items()):
    print(f"{comodo:12} {100 * lc / max(lt, 1):7.1f}% {100 * bc / max(bt, 1):8.1f}%")
FIM
