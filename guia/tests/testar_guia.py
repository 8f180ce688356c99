#!/usr/bin/env python3
"""README and guide tell the truth: every path they name is there, every command they give can be given.

    testar_guia.py source-folder [build-folder]

Reads the Markdown files and looks at
 - links and pictures: the file is there, and so is the heading after #;
 - paths in `backquotes`: a file or folder of the tree (or what the build or the program makes, listed below);
 - commands in indented and fenced blocks: the program exists, a script takes the options it is given, a CMake preset
   or target is known, a named file is there. Commands that only read (`--help`, `-functions`) are run.
 - words of the window in **bold** within the cook's guide: they stand in the program's sources.
"""

import pathlib
import re
import shlex
import shutil
import subprocess
import sys

# What the program, the build or a user makes, and words in backquotes that are no path of the tree.
FEITOS = re.compile(r"""^(build.*|dist/.*|\.local/.*|temporario.*|Fotos.*|Backup.*|Restore.*|Lixeira.*|dadosr\.lst.*|~.*|
    /tmp/.*|capturas/.*|.*\*.*|/usr/.*|.*/NAME.*|NEW_FOLDER|FILE|ROOM/.*|http.*|.*\$\{.*|.*<.*|[.]\w+)$""", re.X)
OS_MESMOS = {"cmake", "ctest", "ninja", "python3", "sqlite3", "cd", "source", "tocar", "git", "apt", "sudo", "for", "xvfb-run",
             "QT_QPA_PLATFORM=offscreen", "env", "livro", "cozinhario"}  # the last two are what the house builds

erros = []


def exigir(certo, onde, texto):
    if not certo:
        erros.append(f"{onde}: {texto}")


def ancora(titulo):
    texto = re.sub(r"[`*]|\[([^]]*)\]\([^)]*\)", r"\1", titulo).strip().lower()
    return re.sub(r"[^\w\- ]", "", texto).replace(" ", "-")


def titulos(caminho):
    return {ancora(l.lstrip("#")) for l in caminho.read_text(encoding="utf-8").splitlines() if l.startswith("#")}


def conferir_elos(arquivo, texto):
    for elo in re.findall(r"\]\(([^)\s]+)\)", re.sub(r"`[^`]*`", "", texto)):
        if elo.startswith(("http:", "https:", "mailto:")):
            continue
        caminho, _, lugar = elo.partition("#")
        alvo = (arquivo.parent / caminho).resolve() if caminho else arquivo
        exigir(alvo.exists(), arquivo, f"link to {elo}: not there")
        if lugar and alvo.suffix == ".md" and alvo.exists():
            exigir(lugar in titulos(alvo), arquivo, f"link to {elo}: no such heading")


def conferir_caminhos(arquivo, texto, raiz, nomes):
    sem_blocos = re.sub(r"^(    |```).*$", "", texto, flags=re.M)
    for dito in re.findall(r"`([^`\n]+)`", sem_blocos):
        caminho = dito.split(" ")[0].strip("'\"")
        if "/" not in caminho and not re.search(r"\.(md|h|cpp|sh|py|cmake|roteiro|txt|json|svg)$", caminho):
            continue
        if FEITOS.match(caminho) or "::" in caminho or caminho.startswith("-"):
            continue
        existe = (raiz / caminho).exists() or (arquivo.parent / caminho).exists() or caminho.split("/")[-1] in nomes
        if not existe:  # a class is named by its header's name without the ending
            existe = any((lugar / (caminho + fim)).exists() for lugar in (raiz, arquivo.parent) for fim in (".h", ".cpp"))
        if not existe and caminho.endswith("..."):
            existe = (raiz / caminho[:-3]).exists()
        if not existe and caminho.endswith(".*"):
            existe = caminho.split("/")[-1][:-2] in {n.rsplit(".", 1)[0] for n in nomes}
        exigir(existe, arquivo, f"`{dito}` is named, but there is no {caminho}")


def blocos(texto):
    """Lines of commands: those indented by four blanks after an empty line, and those in fences of the shell's."""
    cerca, anterior = None, ""
    for linha in texto.splitlines():
        if linha.startswith("```"):
            cerca = linha.strip("`") or "sh" if cerca is None else None
        elif cerca in ("sh", "bash") or (cerca is None and linha.startswith("    ")
                                         and not re.match(r"\s*([-*]|\d+\.) ", linha)
                                         and (anterior.strip() == "" or anterior.startswith("    "))):
            yield linha.strip()
        anterior = linha


def juntar(linhas):
    inteira = ""
    for linha in linhas:
        inteira += linha.rstrip("\\").strip() + " "
        if not linha.endswith("\\"):
            yield inteira.strip()
            inteira = ""


def conferir_comando(arquivo, linha, raiz, alvos, opcoes):
    linha = linha.split("  #")[0].strip()
    for parte in re.split(r"&&|;|\|", linha):
        try:
            palavras = shlex.split(parte)
        except ValueError:
            continue
        while palavras and re.match(r"^[A-Z_]+=", palavras[0]):
            palavras.pop(0)
        if not palavras:
            continue
        programa = palavras[0]
        if programa.startswith("./") or programa.startswith("scripts/"):
            caminho = raiz / programa
            if programa == "./cozinhario":
                continue
            exigir(caminho.is_file() and caminho.stat().st_mode & 0o111, arquivo, f"{linha!r}: {programa} cannot be run")
            if caminho.is_file():
                fonte = caminho.read_text(errors="replace")
                for opcao in (p for p in palavras[1:] if p.startswith("--")):
                    exigir(opcao in fonte, arquivo, f"{linha!r}: {programa} does not know {opcao}")
                for nome in (p for p in palavras[1:] if "/" in p and not FEITOS.match(p)):
                    exigir((raiz / nome).exists(), arquivo, f"{linha!r}: there is no {nome}")
        elif programa.startswith("build"):
            nome = programa.split("/")[-1]
            exigir(alvos is None or nome in alvos or not nome.islower(), arquivo, f"{linha!r}: nothing builds {nome}")
        elif programa in OS_MESMOS or shutil.which(programa):
            if programa == "cmake":
                presets = (raiz / "CMakePresets.json").read_text()
                for i, palavra in enumerate(palavras):
                    if palavra == "--preset":
                        exigir(f'"{palavras[i + 1]}"' in presets, arquivo, f"{linha!r}: no preset {palavras[i + 1]}")
                    if palavra == "--target" and alvos is not None:
                        exigir(palavras[i + 1] in alvos, arquivo, f"{linha!r}: nothing builds {palavras[i + 1]}")
                    if palavra.startswith("-DCOZINHARIO_"):
                        nome = palavra[2:].split("=")[0]
                        exigir(nome in opcoes, arquivo, f"{linha!r}: no option {nome}")
        elif re.match(r"^[a-z0-9_./-]+$", programa):
            exigir(False, arquivo, f"{linha!r}: there is no program {programa}")


def conferir_palavras(arquivo, texto, fontes):
    # What begins an item or a quotation is a heading of its own, not a name from the window.
    sem_titulos = re.sub(r"^\s*(- |> |\d\. )?\*\*[^*\n]+\*\*", "", texto, flags=re.M)
    for palavras in re.findall(r"\*\*([^*\n]+)\*\*", sem_titulos):
        # A name of a button or field: begins with a capital and is no sentence.
        if not re.match(r"^[A-ZÁÉÍÓÚ]", palavras) or palavras.endswith(("?", ".", ":", ",")) or palavras.count(" ") > 6:
            continue
        exigir(palavras in fontes, arquivo, f"**{palavras}** stands nowhere in the program")


COM_BOTOES = {"primeiros-passos.md", "receitas.md", "lista-e-pesquisa.md", "trocar-receitas.md", "copia-de-seguranca.md",
              "novidades.md"}


def main():
    raiz = pathlib.Path(sys.argv[1]).resolve()
    lista = subprocess.run(["git", "-C", str(raiz), "ls-files"], capture_output=True, text=True)
    arquivos = lista.stdout.split("\n") if lista.returncode == 0 else [
        str(p.relative_to(raiz)) for p in raiz.rglob("*") if p.is_file() and not str(p.relative_to(raiz)).startswith("build")]
    nomes = {pathlib.Path(a).name for a in arquivos} | {p for a in arquivos for p in pathlib.Path(a).parts}
    fontes = "".join((raiz / a).read_text(encoding="utf-8", errors="replace").replace("&", "")
                     for a in arquivos if a.endswith((".cpp", ".h")) and "/tests/" not in a)
    opcoes = "".join((raiz / a).read_text() for a in arquivos if a.endswith((".cmake", "CMakeLists.txt")))
    alvos = None
    if len(sys.argv) > 2 and (pathlib.Path(sys.argv[2]) / "build.ninja").exists():
        ninja = subprocess.run(["ninja", "-C", sys.argv[2], "-t", "targets", "all"], capture_output=True, text=True).stdout
        alvos = {l.split(":")[0].split("/")[-1] for l in ninja.splitlines()} | {
            "fuzz_pacote", "fuzz_arquivo", "fuzz_access", "fuzz_novidades_pagina"}
    textos = [raiz / "README.md", raiz / "CONTRIBUTING.md", raiz / "THIRD-PARTY.md", *sorted((raiz / "guia").rglob("*.md"))]
    comandos = 0
    for arquivo in textos:
        texto = arquivo.read_text(encoding="utf-8")
        conferir_elos(arquivo, texto)
        conferir_caminhos(arquivo, texto, raiz, nomes)
        if arquivo.name in COM_BOTOES:
            conferir_palavras(arquivo, texto, fontes)
        for linha in juntar(blocos(texto)):
            comandos += 1
            conferir_comando(arquivo, linha, raiz, alvos, opcoes)
    for erro in erros:
        print(erro.replace(str(raiz) + "/", ""))
    print(f"{len(textos)} texts, {comandos} lines of commands, {len(erros)} that are not so")
    sys.exit(1 if erros else 0)


if __name__ == "__main__":
    main()
