#!/usr/bin/python3
"""The book by ear and voice: what the desktop's accessibility service is told of the running program, and a cook who
enters, finds, opens, changes and deletes a recipe through it alone, without a key and without a mouse.

    testar_acessibilidade.py program

Starts itself again on a display and a message bus of its own. Without Xvfb, dbus-run-session, at-spi2-core or the
service's Python binding the exit code is 77.
"""

import contextlib
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time
import warnings

PRAZO = 60
warnings.simplefilter("ignore")


def falhar(texto):
    sys.exit("testar_acessibilidade.py: " + texto)


def recomecar():
    """The same script on an own display and bus."""
    faltam = [p for p in ("Xvfb", "dbus-run-session") if not shutil.which(p)]
    if not pathlib.Path("/usr/libexec/at-spi-bus-launcher").exists():
        faltam.append("at-spi2-core")
    try:
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi  # noqa: F401
    except (ImportError, ValueError):
        faltam.append("gir1.2-atspi-2.0, python3-gi")
    if faltam:
        print("not installed:", *faltam)
        sys.exit(77)
    ler, escrever = os.pipe()
    tela = subprocess.Popen(["Xvfb", "-displayfd", str(escrever), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                            pass_fds=[escrever], stderr=subprocess.DEVNULL)
    try:
        os.close(escrever)
        numero = os.read(ler, 16).decode().strip()
        with tempfile.TemporaryDirectory() as pasta:
            ambiente = dict(os.environ, DISPLAY=":" + numero, COZINHARIO_TESTE_PASTA=pasta, XDG_RUNTIME_DIR=pasta,
                            HOME=pasta, LC_ALL="pt_BR.UTF-8", QT_QPA_PLATFORM="xcb",
                            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", GSETTINGS_BACKEND="memory")
            ambiente.pop("DBUS_SESSION_BUS_ADDRESS", None)
            ambiente.pop("WAYLAND_DISPLAY", None)
            fim = subprocess.run(["dbus-run-session", "--", "/usr/bin/python3", *sys.argv], env=ambiente)
        sys.exit(fim.returncode)
    finally:
        tela.terminate()
        tela.wait()


if "COZINHARIO_TESTE_PASTA" not in os.environ:
    recomecar()

import gi  # noqa: E402

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


def esperar(o_que, condicao):
    fim = time.monotonic() + PRAZO
    while True:
        GLib.MainContext.default().iteration(False)
        with contextlib.suppress(GLib.Error):
            achado = condicao()
            if achado:
                return achado
        if time.monotonic() > fim:
            mostrar_tudo()
            falhar("in vain waited for: " + o_que)
        time.sleep(0.05)


def filhos(objeto, ate=400):
    for i in range(min(objeto.get_child_count(), ate)):
        filho = objeto.get_child_at_index(i)
        if filho:
            yield filho


def todos(objeto):
    if objeto is None:  # gone meanwhile
        return
    objeto.clear_cache()
    yield objeto
    for filho in filhos(objeto):
        yield from todos(filho)


def tem(objeto, estado):
    return objeto.get_state_set().contains(estado)


def mostra(objeto):
    return tem(objeto, Atspi.StateType.SHOWING)


class Programa:
    def __init__(self, programa):
        self.pasta = pathlib.Path(os.environ["COZINHARIO_TESTE_PASTA"]) / "livro"
        self.pasta.mkdir()
        shutil.copy(programa, self.pasta / "cozinhario")
        self.processo = subprocess.Popen([self.pasta / "cozinhario"])

    def raiz(self):
        mesa = Atspi.get_desktop(0)
        mesa.clear_cache()
        for i in range(mesa.get_child_count()):
            aplicacao = mesa.get_child_at_index(i)
            if aplicacao and aplicacao.get_process_id() == self.processo.pid:
                aplicacao.clear_cache()
                return aplicacao
        return None

    def janela(self, papel, nome):
        raiz = self.raiz()
        return next((j for j in filhos(raiz) if j.get_role_name() == papel and j.get_name() == nome), None) if raiz else None

    def procurar(self, papel, nome, dentro=None):
        """A control that shows."""
        for o in todos(dentro or self.raiz()):
            if o.get_role_name() == papel and o.get_name() == nome and mostra(o):
                return o
        return None

    def achar(self, papel, nome, dentro=None):
        return esperar(f"{papel} {nome!r}", lambda: self.procurar(papel, nome, dentro))

    def fazer(self, objeto, acao):
        nomes = [Atspi.Action.get_action_name(objeto, i) for i in range(Atspi.Action.get_n_actions(objeto))]
        if acao not in nomes:
            falhar(f"{objeto.get_role_name()} {objeto.get_name()!r} has no action {acao!r}, but {nomes}")
        Atspi.Action.do_action(objeto, nomes.index(acao))

    def apertar(self, nome, dentro=None):
        self.fazer(self.achar("push button", nome, dentro), "Press")

    def escrever(self, nome, texto):
        campo = self.achar("text", nome)
        Atspi.EditableText.set_text_contents(campo, texto)
        esperar(f"{nome} holds {texto!r}", lambda: Atspi.Text.get_text(campo, 0, -1) == texto)

    def celula(self, nome):
        """The cell of the list with that text."""
        lista = self.procurar("table", "Receitas")
        return next((c for c in todos(lista) if c.get_name() == nome), None) if lista else None

    def linhas(self):
        lista = self.procurar("table", "Receitas")
        return Atspi.Table.get_n_rows(lista) if lista else -1

    def responder(self, texto, botao):
        """The message box with that text: it is an alert or a dialog that is read out whole."""
        def caixa():
            for j in filhos(self.raiz()):
                if j.get_role_name() in ("alert", "dialog") and any(o.get_name().startswith(texto) for o in todos(j)):
                    return j
            return None
        self.apertar(botao, esperar(f"a message that says {texto!r}", caixa))


P = None


def mostrar_tudo():
    def um(o, n):
        with contextlib.suppress(GLib.Error):
            print("  " * n + o.get_role_name(), repr(o.get_name()), repr(o.get_description()),
                  "showing" if mostra(o) else "", file=sys.stderr)
            for f in filhos(o, 60):
                um(f, n + 1)
    if P and P.processo.poll() is not None:
        print("the program has ended with", P.processo.returncode, file=sys.stderr)
    elif P and P.raiz():
        um(P.raiz(), 0)


def conferir_palavras(tela):
    """Who reaches a control is told what it is, once."""
    interativos = ("push button", "text", "combo box", "check box", "radio button", "table", "tree", "list", "spin button")
    for o in todos(esperar("the window", lambda: P.janela("frame", "Cozinhario 2005"))):
        if not mostra(o):
            continue
        papel, nome, descricao = o.get_role_name(), o.get_name(), o.get_description()
        if papel in interativos and tem(o, Atspi.StateType.FOCUSABLE) and not nome:
            mostrar_tudo()
            falhar(f"{tela}: a {papel} without a name ({descricao!r})")
        if nome and nome == descricao:
            falhar(f"{tela}: {papel} {nome!r} is told twice")


def livro():
    return sqlite3.connect(f"file:{P.pasta / 'dadosr.lst'}?mode=ro", uri=True)


def receitas():
    with contextlib.closing(livro()) as banco:
        banco.create_collation("PORTUGUES", lambda a, b: (a > b) - (a < b))
        return [l[0] for l in banco.execute("select Nome from Receitas")]


def main():
    global P
    esperar("the accessibility service", lambda: Atspi.get_desktop(0))  # it is up before the program looks for it
    P = Programa(sys.argv[1])
    try:
        andar()
    finally:
        if P.processo.poll() is None:
            P.processo.kill()
        P.processo.wait()


def andar():
    esperar("the window as a frame", lambda: P.janela("frame", "Cozinhario 2005"))
    esperar("the empty list", lambda: P.linhas() == 0)
    conferir_palavras("the list")

    # A recipe is entered.
    P.apertar("Nova Receita")
    P.achar("text", "Nome")
    esperar("the list under the form not showing", lambda: not P.procurar("table", "Receitas"))
    conferir_palavras("the form")
    P.escrever("Nome", "Bolo de fubá")
    P.escrever("Tipo", "Bolos")
    P.escrever("Modo de Preparar", "Bata tudo.\nAsse por quarenta minutos.")
    P.escrever("Rendimento", "8")
    P.escrever("Qtde.", "2")
    P.escrever("Medida", "xícara")
    P.escrever("Ingrediente", "fubá")
    P.apertar("Salvar Dados")
    P.achar("table cell", "2 xícara fubá")
    P.apertar("Salvar Receita")
    esperar("one recipe in the list", lambda: P.linhas() == 1)
    esperar("it is in the book", lambda: receitas() == ["Bolo de fubá"])
    esperar("the form under the list not showing", lambda: not P.procurar("push button", "Salvar Receita"))

    # It is found.
    P.apertar("Pesquisa de Receitas")
    P.escrever("Nome da Receita", "fubá")
    conferir_palavras("the search")
    P.apertar("Efetuar Pesquisa")
    esperar("the search finds it", lambda: P.linhas() == 1)
    P.apertar("Voltar")
    P.apertar("Lista de Receitas")

    # It is opened and read by line.
    P.fazer(esperar("its cell", lambda: P.celula("Bolo de fubá")), "open")
    cartao = P.achar("text", "Receita Bolo de fubá")
    conferir_palavras("the card")
    texto = Atspi.Text.get_text(cartao, 0, -1)
    for linha in ("Bolo de fubá", "Tipo : Bolos", "2 xícara fubá", "Bata tudo.", "Asse por quarenta minutos."):
        if linha not in texto.split("\n"):
            falhar(f"the card's text has no line {linha!r}: {texto!r}")
    onde = texto.index("quarenta")
    lida = Atspi.Text.get_text_at_offset(cartao, onde, Atspi.TextBoundaryType.LINE_START).content.strip("\n")
    if lida != "Asse por quarenta minutos.":
        falhar(f"the card's line at {onde} is {lida!r}")
    if tem(cartao, Atspi.StateType.EDITABLE):
        falhar("the card looks editable")

    # It is changed.
    P.apertar("Alterar Receita")
    P.escrever("Nome", "Bolo de fubá cremoso")
    P.apertar("Salvar Receita")
    esperar("the changed recipe in the list", lambda: P.celula("Bolo de fubá cremoso"))
    esperar("and in the book", lambda: receitas() == ["Bolo de fubá cremoso"])

    # It is deleted; the question is announced and answered.
    P.fazer(esperar("its cell", lambda: P.celula("Bolo de fubá cremoso")), "open")
    P.apertar("Alterar Receita")
    P.apertar("Excluir Receita")
    P.responder("Confirma Exclusão dessa Receita", "Sim")
    esperar("nothing left in the book", lambda: receitas() == [])
    esperar("nothing left in the list", lambda: P.linhas() in (0, -1))
    P.apertar("Sair")
    esperar("the program's end", lambda: P.processo.poll() is not None)
    if P.processo.returncode != 0:
        falhar(f"the program ended with {P.processo.returncode}")
    print("entered, found, opened, read, changed and deleted")


if __name__ == "__main__":
    main()
