#!/usr/bin/env python3
"""Opening a package starts the program with the package's path.

    testar_abertura.py cmake build-folder

Installs the desktop's files into a data home of its own, puts a stand-in for the program into the path, opens
packages as a file manager does and looks at what the stand-in was given. Needs update-mime-database
(shared-mime-info), update-desktop-database and desktop-file-validate (desktop-file-utils) and gio
(libglib2.0-bin); without them the exit code is 77.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

FERRAMENTAS = ["update-mime-database", "update-desktop-database", "desktop-file-validate", "gio"]
TIPO = "application/x-cozinhario-pacote"
PACOTES = ["PacoteReceita.lr$", "Pacote da Vovó com açaí.lr$", "PACOTE 100% & 'só'.LR$", "PacoteReceita.lr$ (2).lr$"]
OUTROS = ["PacoteReceita.lr", "PacoteReceita.lrs", "lr$", "x.lr$.txt"]


def exigir(certo, texto):
    if not certo:
        sys.exit("testar_abertura.py: " + texto)


def rodar(*comando, **opcoes):
    resultado = subprocess.run(comando, capture_output=True, text=True, **opcoes)
    exigir(resultado.returncode == 0, f"{comando}: {resultado.stdout}{resultado.stderr}")
    return resultado.stdout


def esperar(caminho):
    fim = time.monotonic() + 20
    while not caminho.exists():
        exigir(time.monotonic() < fim, f"the program was not started for {caminho.name}")
        time.sleep(0.01)
    return caminho.read_text()


def main():
    cmake, construcao = sys.argv[1:]
    faltam = [f for f in FERRAMENTAS if not shutil.which(f)]
    if faltam:
        print("not installed:", *faltam)
        sys.exit(77)
    with tempfile.TemporaryDirectory() as pasta:
        testar(cmake, construcao, pathlib.Path(pasta))


def testar(cmake, construcao, pasta):
    prefixo = pasta / "usr"
    rodar(cmake, "--install", construcao, "--prefix", str(prefixo), "--component", "desktop")
    dados = prefixo / "share"
    rodar("desktop-file-validate", str(dados / "applications/cozinhario.desktop"))
    exigir((dados / "icons/hicolor/scalable/apps/cozinhario.svg").is_file(), "no icon of the entry's name")
    rodar("update-mime-database", str(dados / "mime"))
    rodar("update-desktop-database", str(dados / "applications"))

    # The stand-in writes its arguments beside the package, complete at once.
    programas = pasta / "bin"
    programas.mkdir()
    duble = programas / "cozinhario"
    duble.write_text('#!/bin/sh\nprintf "%s\\n" "$#" "$@" > "$RESPOSTA.novo" && mv "$RESPOSTA.novo" "$RESPOSTA"\n')
    duble.chmod(0o755)
    ambiente = dict(os.environ, HOME=str(pasta), XDG_DATA_HOME=str(dados), XDG_CONFIG_HOME=str(pasta / "config"),
                    XDG_DATA_DIRS="/usr/share", PATH=f"{programas}:{os.environ['PATH']}",
                    DBUS_SESSION_BUS_ADDRESS="disabled:", LC_ALL="C.UTF-8")

    correio = pasta / "Anexos de e-mail"
    correio.mkdir()
    for i, nome in enumerate(PACOTES):
        pacote = correio / nome
        pacote.write_bytes(b"x\xda")
        exigir(TIPO in rodar("gio", "info", "-a", "standard::content-type", str(pacote), env=ambiente),
               f"{nome!r} is not taken for a package")
        resposta = pasta / f"resposta{i}"
        rodar("gio", "open", str(pacote), env=dict(ambiente, RESPOSTA=str(resposta)))
        exigir(esperar(resposta) == f"1\n{pacote}\n", f"{nome!r}: the program got {resposta.read_text()!r}")
    for nome in OUTROS:
        outro = correio / nome
        outro.write_bytes(b"x\xda")
        exigir(TIPO not in rodar("gio", "info", "-a", "standard::content-type", str(outro), env=ambiente),
               f"{nome!r} is taken for a package")


if __name__ == "__main__":
    main()
