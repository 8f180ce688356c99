#!/usr/bin/env python3
"""Whether the includes keep to the house's arrows.

    scripts/setas.py            checks, and says what is wrong
    scripts/setas.py --mostrar  prints the arrows between the folders

Three rules: no file includes itself by a detour; no two folders include each other; no folder includes one that
stands above it. The order from the ground up is the list in the top CMakeLists.txt; that a subsystem reaches only
those it is linked to is the compiler's business (every library has an include root of its own)."""
import os
import re
import sys

RAIZ = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def ler_ordem():
    texto = open(os.path.join(RAIZ, "CMakeLists.txt"), encoding="utf-8").read()
    return re.search(r"set\(comodos ([^)]*)\)", texto).group(1).split()


def ler_includes(ordem):
    """{file: [files of the house that it includes]}; tests and fuzz targets may look anywhere."""
    includes = {}
    for comodo in ordem:
        for pasta, pastas, nomes in os.walk(os.path.join(RAIZ, comodo)):
            pastas[:] = [p for p in pastas if p not in ("tests", "fuzz", "data")]
            for nome in nomes:
                if not nome.endswith((".h", ".cpp")):
                    continue
                caminho = os.path.join(pasta, nome)
                arquivo = os.path.relpath(caminho, RAIZ)
                achados = []
                for alvo in re.findall(r'^#include "([^"]+)"', open(caminho, encoding="utf-8").read(), re.M):
                    for candidato in (alvo, os.path.join(os.path.dirname(arquivo), alvo)):
                        if os.path.exists(os.path.join(RAIZ, candidato)) and "/tests/" not in candidato:
                            achados.append(os.path.normpath(candidato))
                            break
                includes[arquivo] = achados
    return includes


def procurar_circulo(includes):
    """The units of one circle of includes, or nothing. A unit is a header with its source, and with a header that has
    no source of its own where that source shares with it what the first header only names."""
    unidade = lambda arquivo: re.sub(r"\.(h|cpp)$", "", arquivo)
    privados = {}
    for arquivo, alvos in includes.items():
        if arquivo.endswith(".cpp"):
            dona = unidade(arquivo)
            for alvo in alvos:
                if unidade(alvo) + ".cpp" not in includes and dona + ".h" in includes.get(alvo, ()):
                    privados[unidade(alvo)] = dona
    simples = unidade
    unidade = lambda arquivo: privados.get(simples(arquivo), simples(arquivo))
    grafo = {}
    for arquivo, alvos in includes.items():
        grafo.setdefault(unidade(arquivo), set()).update(unidade(a) for a in alvos)
    estado, pilha = {}, []

    def visitar(no):
        estado[no] = "aberto"
        pilha.append(no)
        for alvo in sorted(grafo.get(no, ())):
            if alvo == no:
                continue
            if estado.get(alvo) == "aberto":
                return pilha[pilha.index(alvo):] + [alvo]
            if alvo not in estado:
                circulo = visitar(alvo)
                if circulo:
                    return circulo
        pilha.pop()
        estado[no] = "fechado"
        return None

    sys.setrecursionlimit(10000)
    for no in sorted(grafo):
        if no not in estado:
            circulo = visitar(no)
            if circulo:
                return circulo
    return None


def main():
    ordem = ler_ordem()
    includes = ler_includes(ordem)
    setas = {}
    for arquivo, alvos in includes.items():
        de = arquivo.split("/")[0]
        for alvo in alvos:
            para = alvo.split("/")[0]
            if para != de:
                setas.setdefault((de, para), []).append(arquivo)
    if "--mostrar" in sys.argv:
        for (de, para), arquivos in sorted(setas.items()):
            print(f"{de} -> {para}  ({len(arquivos)})")
        return 0
    faltas = []
    for (de, para), arquivos in sorted(setas.items()):
        if ordem.index(para) > ordem.index(de):
            faltas.append(f"{de} includes {para}, which stands above it: {', '.join(sorted(set(arquivos)))}")
        if (para, de) in setas and de < para:
            faltas.append(f"{de} and {para} include each other")
    circulo = procurar_circulo(includes)
    if circulo:
        faltas.append("a circle of includes: " + " -> ".join(circulo))
    print("\n".join(faltas) if faltas else
          f"{len(includes)} files, {sum(map(len, includes.values()))} includes, {len(setas)} arrows between folders: none up, no circle")
    return 1 if faltas else 0


sys.exit(main())
