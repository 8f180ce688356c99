#!/usr/bin/env python3
"""Makes one table of what the benches measured and writes it into bench/README.md.

usage: bench/tabela.py FOLDER   (with NAME.json of every bench)
"""

import datetime
import json
import os
import pathlib
import platform
import sys

INICIO = "<!-- table: written by rodar.sh -->"
FIM = "<!-- end of the table -->"


def numero(valor):
    """Three figures that count."""
    if valor == 0:
        return "0"
    if valor >= 100:
        return f"{valor:.0f}"
    return f"{valor:.{1 if valor >= 10 else 2 if valor >= 0.1 else 3}f}"


class Medidas:
    def __init__(self, pasta):
        self.linhas = []
        self.por_nome = {}
        for arquivo in sorted(pathlib.Path(pasta).glob("*.json")):
            dados = json.loads(arquivo.read_text())
            for medida in dados.get("benchmarks", dados.get("partidas", [])):
                nome = f"{arquivo.stem}:{medida.get('name')}"
                if medida.get("run_type") == "aggregate" and medida.get("aggregate_name") != "median":
                    continue
                if medida.get("error_occurred"):
                    print(f"{nome}: {medida.get('error_message')}", file=sys.stderr)
                    continue
                self.por_nome.setdefault(nome, medida)

    def de(self, nome):
        return self.por_nome.get(nome)

    def linha(self, trabalho, nosso, nu, razao, limite, unidade="ms", crescimento=""):
        """`limite` is a number for the ratio, or (number, unit) for our own value; `crescimento` tells how ours
        grew since the book before."""
        passou = ""
        if isinstance(limite, tuple):
            escrito = f"{numero(limite[0])} {limite[1]}"
            passou = " **over**" if nosso > limite[0] else ""
        elif limite:
            escrito = f"{limite:g} x"
            passou = " **over**" if razao and razao > limite else ""
        else:
            escrito = ""
        self.linhas.append(
            f"| {trabalho} | {numero(nosso)} {unidade} | {numero(nu) + ' ' + unidade if nu else ''} "
            f"| {numero(razao) if razao else ''}{passou} | {escrito} | {crescimento} |"
        )

    def partidas(self, trabalho, nome, limite):
        for livro in (0, 1000, 20000, 250000):
            medida = self.de(f"partida:{nome}/{livro}")
            if not medida:
                continue
            teto = limite(livro) if callable(limite) else limite
            self.linha(f"{trabalho}, {livro} recipes", medida["nosso"], medida["nu"], medida["nosso"] / medida["nu"],
                       teto, medida["unidade"])

    def comparadas(self, bench, trabalho, nome, limite, sufixo="", tamanhos=(50, 1000, 20000, 250000), campo=None):
        """Benches that report ours, the bare one and the ratio themselves, or one value of theirs (`campo`)."""
        antes = None
        for tamanho in tamanhos:
            medida = self.de(f"{bench}:{nome}/{tamanho}{sufixo}")
            if not medida or (campo and campo not in medida):
                continue
            nosso = medida[campo] if campo else medida.get("nosso_ms", medida["nu_ms"] * medida["razao"])
            crescimento = ""
            if antes and antes[1] > 0:
                crescimento = f"{numero(nosso / antes[1])} x for {numero(tamanho / antes[0])} x"
            antes = (tamanho, nosso)
            if campo or medida["nu_ms"] < 0.0005:
                self.linha(f"{trabalho}, {tamanho} recipes", nosso, None, None, limite, crescimento=crescimento)
            else:
                self.linha(f"{trabalho}, {tamanho} recipes", nosso, medida["nu_ms"], medida["razao"], limite,
                           crescimento=crescimento)

    def par(self, bench, trabalho, nosso, nu, limite, campo="cpu_time"):
        """Two benches of one file, one ours and one bare."""
        minha, dela = self.milissegundos(bench, nosso, campo), self.milissegundos(bench, nu, campo)
        if minha and dela:
            self.linha(trabalho, minha, dela, minha / dela, limite)

    def milissegundos(self, bench, nome, campo):
        medida = self.de(f"{bench}:{nome}")
        return medida and medida[campo] * {"ns": 1e-6, "us": 1e-3, "ms": 1, "s": 1e3}[medida["time_unit"]]

    def tabela(self):
        self.partidas("process start to first paint", "PrimeiraPintura", 1.6)
        self.partidas("process start to first paint, processor time", "PrimeiraPinturaProcessador", None)
        self.partidas("first paint with the news, beside without, processor time", "PrimeiraPinturaComESemNovidades", 1.05)
        self.partidas("start to the rolled-open list (bare: window + roll's pacing + fetch)", "ListaAberta",
                      lambda livro: 1.8 if livro <= 10000 else 2.5)
        self.partidas("start to the rolled-open list with the news, beside without", "ListaAbertaComESemNovidades", None)
        self.partidas("peak memory, list filled (bare: the bare window)", "MemoriaMaxima",
                      lambda livro: (42, "MB") if livro == 0 else (45, "MB") if livro <= 10000 else (120, "MB"))
        self.comparadas("store", "save: the statements of ten lines", "ComandosDeGravar", 1.5,
                        "/iterations:31/manual_time")
        self.comparadas("store", "save: `GravarReceita`, ten lines", "Gravar", (60, "ms"),
                        "/iterations:31/manual_time")
        self.comparadas("store", "open, ask for a recipe, close", "AbrirEConsultar", None, "/manual_time")
        self.comparadas("store", "fetch of the list's columns (same book)", "BuscarLista", 1.5, "/manual_time")
        self.comparadas("store", "fetch of the list's columns (best index)", "BuscarListaComIndice", 2.5, "/manual_time")
        self.comparadas("store", "DISTINCT ingredients (same book)", "NomesDistintos", None, "/manual_time")
        self.comparadas("store", "DISTINCT ingredients (best index)", "NomesDistintosComIndice", 2, "/manual_time")
        m = "/manual_time"
        self.comparadas("browse", "list filled again, the book written since", "PreencherLista", 1.2, m)
        self.comparadas("browse", "the same, first rows", "PreencherLista", (30, "ms"), m, campo="primeira_ms")
        self.comparadas("browse", "the same, longest silence", "PreencherLista", (16, "ms"), m, campo="silencio_ms")
        self.comparadas("browse", "list filled again, book unchanged", "PreencherListaIgual", (15, "ms"), m)
        self.comparadas("browse", "list opened, without the roll's pacing", "AbrirLista", None, m)
        self.comparadas("browse", "name search, click to rows (both runs)", "PesquisarNome", 3, m)
        self.comparadas("browse", "the same, longest silence", "PesquisarNome", (16, "ms"), m, campo="silencio_ms")
        self.comparadas("browse", "ingredient search, click to rows (both runs)", "PesquisarIngrediente", None, m)
        self.comparadas("browse", "search opened and painted, the book written since", "AbrirPesquisa", (50, "ms"), m)
        self.comparadas("browse", "the same, longest silence", "AbrirPesquisa", (16, "ms"), m, campo="silencio_ms")
        self.comparadas("browse", "search opened and painted, book unchanged", "AbrirPesquisaIgual", (20, "ms"), m)
        self.comparadas("browse", "choice lists complete (bare: the indexed DISTINCTs)", "EscolhasCompletas", 1.5, m)
        self.comparadas("browse", "the same, longest silence", "EscolhasCompletas", (16, "ms"), m, campo="silencio_ms")
        self.comparadas("browse", "a key press completed among all ingredients", "TeclaCompletada", (5, "ms"), m)
        self.comparadas("browse", "column sort (bare: `std::sort` of ready keys)", "OrdenarColuna", 1.2, m)
        self.comparadas("browse", "the same, longest silence", "OrdenarColuna", (16, "ms"), m, campo="silencio_ms")
        self.comparadas("browse", "opening a card", "AbrirCartao", (12, "ms"), "/manual_time")
        self.par("packages", "base64 encode, 1 MB (bare: QByteArray)", "CodificarBase64Class/1000000",
                 "CodificarQByteArray/1000000", 1)
        self.par("packages", "base64 decode, 1 MB (bare: QByteArray)", "DecodificarBase64Class/1000000",
                 "DecodificarQByteArray/1000000", 1)
        self.par("packages", "pack (bare: zlib)", "CompactarRecipiente", "CompactarZlib", 1.05)
        self.par("packages", "unpack (bare: zlib)", "DescompactarRecipiente", "DescompactarZlib", 1.05)
        for receitas in (1000, 10000):
            self.par("packages", f"import of {receitas} recipes with ten lines", f"ImportarPacote/{receitas}/iterations:1/real_time",
                     f"InserirComMotorNu/{receitas}/iterations:1/real_time", None, "real_time")
        mil = self.milissegundos("packages", "ExportarComFiguras/1000/real_time", "real_time")
        quarto = self.milissegundos("packages", "ExportarComFiguras/250/real_time", "real_time")
        if mil and quarto:
            self.linha("export of 1 000 recipes (beside four times 250)", mil, 4 * quarto, mil / (4 * quarto), None)
        backup = self.de("backup:BackupDeDuzentosMegabytes/iterations:3/manual_time")
        if backup:
            self.linha("backup of 200 MB, processor time (bare: compress2)", backup["cpu_ratio"] * backup["compress2_s"],
                       backup["compress2_s"], backup["cpu_ratio"], 1.05, "s")
            self.linha("backup of 200 MB, peak memory (bare: the archive)", backup["peak_backup_MB"],
                       backup["archive_MB"], backup["peak_backup_ratio"], 2.5, "MB")
        self.par("access", "old book of 20 000 recipes converted (bare: one transaction)",
                 "Conversao/repeats:5/real_time_median", "MotorPuro/repeats:5/real_time_median", 3, "real_time")
        for receitas in (50, 100, 200):
            medida = self.de(f"print:ReceitasEmUmPdf/{receitas}")
            if medida:
                self.linha(f"{receitas} recipes as one PDF, {medida['paginas/s']:.0f} pages a second",
                           medida["cpu_time"], None, None, None)
        return self.linhas


def maquina():
    modelo = next((linha.split(":")[1].strip() for linha in open("/proc/cpuinfo") if linha.startswith("model name")),
                  platform.machine())
    memoria = int(open("/proc/meminfo").readline().split()[1]) / 1024 / 1024
    carga = os.getloadavg()[0]
    return (f"{datetime.date.today()}: {os.cpu_count()} cores ({modelo}), {memoria:.0f} GB, "
            f"{platform.freedesktop_os_release()['PRETTY_NAME']}, load average {carga:.1f} at the end of the run.")


def main():
    linhas = Medidas(sys.argv[1]).tabela()
    if not linhas:
        sys.exit("tabela.py: no figures found")
    tabela = "\n".join([maquina(), "", "| work | ours | bare | ratio | limit | growth |", "|---|--:|--:|--:|--:|--:|", *linhas])
    print(tabela)
    arquivo = pathlib.Path(__file__).parent / "README.md"
    texto = arquivo.read_text()
    antes, resto = texto.split(INICIO)
    depois = resto.split(FIM)[1]
    arquivo.write_text(f"{antes}{INICIO}\n{tabela}\n{FIM}{depois}")


main()
