#!/usr/bin/env python3
"""Drives the program and a peer from outside and prints what the same work takes in each.

usage: bench/pares.py FOLDER_OF_PROGRAMS WORK_FOLDER RECIPES RUNS   (called by pares.sh, on a display of its own)

A piece of work begins with a key or a click and ends when the program has not used the processor for a while;
its time is the wall's until then (`wall`) and what its main thread used of the processor meanwhile (`cpu`).
"""

import os
import pathlib
import shutil
import signal
import sqlite3
import statistics
import subprocess
import sys
import time

CALMA = 0.15  # seconds without work that end a piece of it
POUCO = 2e6  # nanoseconds of processor time in that stretch that are none: a blinking cursor


def xdotool(*argumentos):
    return subprocess.run(["xdotool", *map(str, argumentos)], check=True, capture_output=True, text=True).stdout


class Programa:
    def __init__(self, comando, titulo, ambiente=None):
        inicio = time.monotonic()
        self.processo = subprocess.Popen(comando, env=os.environ | (ambiente or {}), start_new_session=True,
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.janela = xdotool("search", "--sync", "--onlyvisible", "--pid", self.processo.pid, "--name",
                              titulo).split()[0]
        xdotool("windowactivate", "--sync", self.janela)
        self.janela = xdotool("getactivewindow").strip()
        self.partida = self.medir(lambda: None, inicio)

    def processador(self):
        """Nanoseconds of the main thread."""
        pid = self.processo.pid
        return int(pathlib.Path(f"/proc/{pid}/task/{pid}/schedstat").read_text().split()[0])

    def medir(self, acao, inicio=None):
        """(wall, cpu) in milliseconds of what the action sets off."""
        cpu0 = self.processador() if inicio is None else 0
        inicio = inicio or time.monotonic()
        acao()
        ultima, desde, visto = time.monotonic(), time.monotonic(), self.processador()
        while time.monotonic() - desde < CALMA:
            time.sleep(0.002)
            agora = self.processador()
            if agora - visto > POUCO:
                ultima = desde = time.monotonic()
                visto = agora
        return 1000 * (ultima - inicio), (visto - cpu0) / 1e6

    def memoria(self):
        for linha in pathlib.Path(f"/proc/{self.processo.pid}/status").read_text().splitlines():
            if linha.startswith("VmHWM"):
                return int(linha.split()[1]) / 1024
        return 0

    def clicar(self, x, y):
        xdotool("mousemove", "--window", self.janela, x, y, "click", 1)

    def teclar(self, *teclas):
        xdotool("key", "--clearmodifiers", *teclas)

    def escrever(self, texto):
        xdotool("type", "--delay", 4, texto)

    def fim(self):
        os.killpg(self.processo.pid, signal.SIGKILL)
        self.processo.wait()


def nosso(pasta, notas):
    # The buttons of the toolbar and the fields of the search, in pixels of the window at scale 1.
    LISTA, PESQUISA, NOVA, INGREDIENTE = (97, 30), (152, 30), (42, 30), (300, 467)
    programa = Programa([str(pasta / "cozinhario")], "^Cozinhario", {"HOME": str(pasta), "XDG_RUNTIME_DIR": str(pasta)})
    notas("start", programa.partida)
    time.sleep(0.5)
    notas("list filled again", programa.medir(lambda: programa.clicar(*LISTA)))
    notas("search or editor opened", programa.medir(lambda: programa.clicar(*PESQUISA)))
    time.sleep(0.7)
    programa.escrever("bolo")
    time.sleep(0.3)
    notas("name found", programa.medir(lambda: programa.teclar("alt+p")))
    programa.clicar(*PESQUISA)
    time.sleep(1)
    programa.teclar("ctrl+a", "BackSpace")
    programa.clicar(*INGREDIENTE)
    time.sleep(0.5)
    programa.escrever("sal")
    time.sleep(0.3)
    notas("ingredient found", programa.medir(lambda: programa.teclar("alt+p")))
    notas("memory, MB", (programa.memoria(), programa.memoria()))
    programa.fim()


def par(pasta, notas):
    programa = Programa(["anymeal"], "^AnyMeal", {"XDG_DATA_HOME": str(pasta), "HOME": str(pasta)})
    notas("start", programa.partida)
    time.sleep(2)

    def procurar(atalho, texto):
        programa.medir(lambda: programa.teclar(atalho))
        time.sleep(0.5)
        programa.medir(lambda: programa.escrever(texto))
        return programa.medir(lambda: programa.teclar("Return"))

    nome = procurar("alt+t", "bolo")
    notas("list filled again", programa.medir(lambda: programa.clicar(65, 91)))
    notas("name found", nome)
    programa.clicar(65, 91)
    time.sleep(2)
    notas("ingredient found", procurar("alt+i", "sal"))
    notas("memory, MB", (programa.memoria(), programa.memoria()))
    programa.fim()


def copiar(nosso_livro, livro_do_par):
    """The peer's book holds the recipes of ours: names, kinds, ingredients, method."""
    de, para = sqlite3.connect(nosso_livro), sqlite3.connect(livro_do_par)
    de.create_collation("PORTUGUES", lambda a, b: (a > b) - (a < b))
    tipos, ingredientes = {}, {}
    for numero, nome, tipo, porcoes, modo in de.execute(
            "select id_receitas,Nome,Classificacao,Porcoes,Modo from Receitas"):
        para.execute("insert into recipes values(?,?,?,'porções')", (numero, nome[:60], porcoes or 1))
        para.execute("insert into instruction values(?,1,?)", (numero, modo))
        if tipo:
            if tipo not in tipos:
                tipos[tipo] = len(tipos) + 1
                para.execute("insert into categories values(?,?)", (tipos[tipo], tipo))
            para.execute("insert into category values(?,?)", (numero, tipos[tipo]))
    linha, anterior = 0, None
    for numero, ingrediente in de.execute(
            "select id_receitas,Ingrediente from Ingredientes order by id_receitas,id_ingredientes"):
        linha = linha + 1 if numero == anterior else 1
        anterior = numero
        chave = ingrediente[:60]
        if chave not in ingredientes:
            ingredientes[chave] = len(ingredientes) + 1
            para.execute("insert into ingredients values(?,?)", (ingredientes[chave], chave))
        para.execute("insert into ingredient values(?,?,1,0,1,0.0,'  ',?)", (numero, linha, ingredientes[chave]))
    para.commit()


def main():
    programas, trabalho = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    receitas, vezes = int(sys.argv[3]), int(sys.argv[4])
    minha, dele = trabalho / "nosso", trabalho / "par"
    minha.mkdir()
    dele.mkdir()
    minha.chmod(0o700)
    subprocess.run([programas / "gerar_livro", minha, str(receitas)], check=True, stdout=subprocess.DEVNULL)
    shutil.copy(programas / "cozinhario", minha)
    primeiro = Programa(["anymeal"], "^AnyMeal", {"XDG_DATA_HOME": str(dele), "HOME": str(dele)})  # makes its book
    primeiro.fim()
    copiar(minha / "dadosr.lst", next(dele.rglob("anymeal.sqlite")))

    notas = {}
    for vez in range(-1, vezes):  # the first round warms the caches
        for quem, rodar, pasta in (("ours", nosso, minha), ("AnyMeal", par, dele)):
            rodar(pasta, lambda trabalho, valor, quem=quem: notas.setdefault((trabalho, quem), []).append(valor)
                  if vez >= 0 else None)
    print(f"{receitas} recipes, {vezes} runs, load average {os.getloadavg()[0]:.1f} at the end\n")
    print("| work | ours: wall | cpu | AnyMeal: wall | cpu | ratio of cpu |\n|---|--:|--:|--:|--:|--:|")
    for trabalho in dict.fromkeys(trabalho for trabalho, _ in notas):
        celulas = []
        for quem in ("ours", "AnyMeal"):
            valores = notas.get((trabalho, quem))
            celulas += [statistics.median(v[i] for v in valores) for i in (0, 1)] if valores else [None, None]
        razao = f"{celulas[1] / celulas[3]:.2f}" if celulas[1] and celulas[3] else ""
        print(f"| {trabalho} | " + " | ".join("" if c is None else f"{c:.0f}" for c in celulas) + f" | {razao} |")


main()
