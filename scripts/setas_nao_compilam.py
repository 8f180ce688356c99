#!/usr/bin/env python3
"""Tries every include against the arrows: a library that does not link another cannot include its headers.

    setas_nao_compilam.py COMPILER FOLDER_OF_INCLUDE_ROOTS

For each library, one source with an include of every library of the house is given to the preprocessor, with the
include folders that the library is built with: what it links must be found, and nothing else."""
import glob
import os
import subprocess
import sys
import tempfile

compilador, raizes = sys.argv[1:]
bibliotecas = {}
for linha in open(os.path.join(raizes, "bibliotecas.txt"), encoding="utf-8").read().splitlines():
    nome, *pastas = linha.split(";")
    bibliotecas[nome] = [p for p in pastas if p]


def cabecalhos_de(nome):
    raiz = os.path.join(raizes, nome)
    # Helpers of tests are every test's.
    return sorted(os.path.relpath(c, raiz) for c in glob.glob(raiz + "/**/*.h", recursive=True) if "/tests/" not in c)


donas = {}
for nome in bibliotecas:
    for cabecalho in cabecalhos_de(nome):
        donas.setdefault(cabecalho, set()).add(nome)

faltas, proibidos, permitidos = [], 0, 0
# The preprocessor also looks beside a source; this one stands where nothing is.
vazia = tempfile.TemporaryDirectory()
for nome, pastas in bibliotecas.items():
    meus = {os.path.basename(p) for p in pastas if os.path.dirname(p) == raizes.rstrip("/")}
    argumentos = [compilador, "-E", "-x", "c++", "-", "-o", os.devnull]
    argumentos += [f"-I{p}" for p in pastas]
    # __has_include asks what an include would find; an error names each answer that should not be.
    fonte = ""
    for cabecalho, de in sorted(donas.items()):
        pode = bool(de & meus)
        permitidos += pode
        proibidos += not pode
        fonte += f'#if {"!" if pode else ""}__has_include("{cabecalho}")\n#error {cabecalho}\n#endif\n'
    feito = subprocess.run(argumentos, input=fonte, text=True, capture_output=True,
                           cwd=vazia.name)
    if feito.returncode:
        faltas += [f"{nome}: {linha}" for linha in feito.stderr.splitlines() if "#error" in linha]

# One real include against the arrows, to see that the compiler stops at it.
base = [f"-I{p}" for p in bibliotecas["base"]]
feito = subprocess.run([compilador, "-E", "-x", "c++", "-", "-o", os.devnull, *base],
                       input='#include "store/Banco.h"\n', text=True, capture_output=True,
                           cwd=vazia.name)
if feito.returncode == 0:
    faltas.append("base could include store/Banco.h")

print("\n".join(faltas[:40]) or f"{len(bibliotecas)} libraries: {permitidos} includes found, {proibidos} refused, as drawn")
sys.exit(1 if faltas or not proibidos else 0)
