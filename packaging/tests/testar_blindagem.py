#!/usr/bin/env python3
"""The program is built hardened: a fault in a parser must not become somebody's way in.

    testar_blindagem.py program

Reads the binary: loaded at a place nobody knows (PIE), tables that are read-only once it runs (RELRO with BIND_NOW),
no stack that can be executed and no page that can be written and executed, guards on the stack, checked copies
(FORTIFY), no library path of the machine that built it, and landing marks for indirect jumps where the processor
knows them.
"""

import os
import re
import shutil
import subprocess
import sys


def ler(*comando):
    return subprocess.run(comando, check=True, capture_output=True, text=True, env={"LC_ALL": "C", "PATH": "/usr/bin:/bin"}).stdout


def main():
    if not shutil.which("readelf") or not shutil.which("objdump"):
        print("not installed: binutils")
        sys.exit(77)
    programa = sys.argv[1]
    if not os.path.exists(programa):
        print("not built:", programa)
        sys.exit(77)
    cabeca = ler("readelf", "--wide", "--file-header", "--program-headers", "--dynamic", programa)
    nomes = ler("readelf", "--wide", "--dyn-syms", programa)
    if "__asan_init" in nomes:
        print("a build for the sanitizers is not given away")
        sys.exit(77)
    faltam = []

    def exigir(certo, texto):
        print("ok  " if certo else "FAIL", texto)
        if not certo:
            faltam.append(texto)

    exigir(re.search(r"Type:\s+DYN", cabeca) and re.search(r"FLAGS_1\).*\bPIE\b", cabeca), "PIE")
    exigir("GNU_RELRO" in cabeca, "RELRO")
    exigir(re.search(r"\(FLAGS\).*BIND_NOW|FLAGS_1\).*\bNOW\b", cabeca), "BIND_NOW")
    pilha = re.search(r"GNU_STACK\s+\S+\s+\S+\s+\S+\s+\S+\s+\S+\s+([RWE ]+?)\s+0x", cabeca)
    exigir(pilha and "E" not in pilha.group(1), "no executable stack")
    exigir(not re.search(r"LOAD\s+(\S+\s+){5}RWE", cabeca), "no page to write and execute")
    exigir("__stack_chk_fail" in nomes, "stack protector")
    exigir(re.search(r"__(memcpy|memmove|strcpy|snprintf|fprintf|printf|vsnprintf|read|recv)_chk\b", nomes), "FORTIFY")
    exigir(not re.search(r"\((RPATH|RUNPATH)\)", cabeca), "no library path of the builder")
    if "X86-64" in cabeca:
        codigo = ler("objdump", "--disassemble", "--no-show-raw-insn", "--section=.text", programa)
        exigir(len(re.findall(r"\bendbr64\b", codigo)) > 1000, "-fcf-protection")
    sys.exit(1 if faltam else 0)


if __name__ == "__main__":
    main()
