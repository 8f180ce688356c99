#!/usr/bin/env python3
"""What an installation gives the desktop is in order, at any prefix.

    testar_desktop.py cmake build-folder source-folder

Installs the desktop's files and the guide into a prefix given only then, and looks: the entry and the metadata are
valid, the icons have the sizes of their folders, the entry's action opens a guide that is there and whose every link
and picture leads somewhere, the example package is the committed one, the manual pages can be shown. Without
desktop-file-validate, appstreamcli or cmark-gfm the exit code is 77.
"""

import filecmp
import gzip
import html.parser
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import urllib.parse

LADOS = [16, 22, 24, 32, 48, 64, 128, 256]


def exigir(certo, texto):
    if not certo:
        sys.exit("testar_desktop.py: " + texto)


def rodar(*comando):
    resultado = subprocess.run(comando, capture_output=True, text=True)
    exigir(resultado.returncode == 0, f"{comando}: {resultado.stdout}{resultado.stderr}")
    return resultado.stdout


class Pagina(html.parser.HTMLParser):
    def __init__(self, caminho):
        super().__init__()
        self.elos, self.nomes, self.titulo, self.dentro = [], set(), "", ""
        self.feed(caminho.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        self.dentro = tag
        for nome, valor in attrs:
            if nome in ("href", "src"):
                self.elos.append(valor)
            if nome == "id":
                self.nomes.add(valor)

    def handle_data(self, data):
        if self.dentro == "title":
            self.titulo += data


def conferir_guia(guia):
    paginas = {p.name: Pagina(p) for p in guia.glob("*.html")}
    exigir(len(paginas) >= 9 and "index.html" in paginas, f"the guide's pages, not only {sorted(paginas)}")
    for nome, pagina in paginas.items():
        exigir(pagina.titulo.strip(), f"{nome} has no title")
        for elo in pagina.elos:
            if elo.startswith(("http:", "https:")):
                continue
            arquivo, _, lugar = urllib.parse.unquote(elo).partition("#")
            exigir(not arquivo or (guia / arquivo).is_file(), f"{nome} leads to {elo}, which is not there")
            if lugar:
                exigir(lugar in paginas[arquivo or nome].nomes, f"{nome} leads to {elo}: no such heading")
        if nome != "index.html":
            exigir(any(nome == elo for elo in paginas["index.html"].elos), f"index.html does not lead to {nome}")


def main():
    cmake, construcao, fontes = sys.argv[1:]
    faltam = [f for f in ("desktop-file-validate", "appstreamcli", "cmark-gfm") if not shutil.which(f)]
    if faltam:
        print("not installed:", *faltam)
        sys.exit(77)
    rodar(cmake, "--build", construcao, "--target", "guia", "icones", "papeis")
    with tempfile.TemporaryDirectory() as pasta:
        testar(cmake, construcao, pathlib.Path(fontes), pathlib.Path(pasta) / "um prefixo")


def testar(cmake, construcao, fontes, prefixo):
    for parte in ("desktop", "guia"):
        rodar(cmake, "--install", construcao, "--prefix", str(prefixo), "--component", parte)
    dados = prefixo / "share"

    entrada = dados / "applications/cozinhario.desktop"
    rodar("desktop-file-validate", str(entrada))
    acao = [linha for linha in entrada.read_text().splitlines() if linha.startswith("Exec=xdg-open ")]
    exigir(len(acao) == 1, "the entry's action opens the guide")
    guia = pathlib.Path(acao[0].split(" ", 1)[1].strip('"'))
    exigir(guia == dados / "cozinhario/guia/index.html", f"the action opens {guia}")
    exigir(guia.is_file(), "the action's guide is there")
    conferir_guia(guia.parent)

    metadados = list((dados / "metainfo").glob("*.metainfo.xml"))
    exigir(len(metadados) == 1, "one file of metadata")
    rodar("appstreamcli", "validate", "--no-net", str(metadados[0]))
    versao = [l for l in (fontes / "CMakeLists.txt").read_text().splitlines() if l.startswith("project(")][0].split()[2]
    exigir(f'<release version="{versao}"' in metadados[0].read_text(), f"the metadata know release {versao}")
    exigir(f"({versao}-" in (fontes / "packaging/debian/changelog").read_text().splitlines()[0],
           f"the package's changelog begins with {versao}")
    exigir(f"## {versao}" in (fontes / "CHANGELOG.md").read_text(), f"CHANGELOG.md knows {versao}")

    icones = dados / "icons/hicolor"
    exigir((icones / "scalable/apps/cozinhario.svg").is_file(), "the drawing is an icon")
    for lado in LADOS:
        cabeca = (icones / f"{lado}x{lado}/apps/cozinhario.png").read_bytes()[:24]
        exigir(cabeca[:8] == b"\x89PNG\r\n\x1a\n", f"the icon of {lado} is a PNG")
        exigir(struct.unpack(">II", cabeca[16:24]) == (lado, lado), f"the icon of {lado} has its size")

    pacote = dados / "cozinhario/exemplos/PacoteReceita.lr$"
    exigir(filecmp.cmp(pacote, fontes / "exemplos/PacoteReceita.lr$", shallow=False), "the examples are the committed ones")

    for manual in ("man/man1", "man/pt_BR/man1"):
        texto = gzip.decompress((dados / manual / "cozinhario.1.gz").read_bytes()).decode("utf-8")
        exigir(texto.startswith(".TH COZINHARIO 1"), f"{manual} is a manual page")
        for caminho in ("dadosr.lst", "Lixeira", "PacoteReceita.lr$", "guia/index.html"):
            exigir(caminho in texto, f"{manual} names {caminho}")


if __name__ == "__main__":
    main()
