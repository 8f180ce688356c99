#!/usr/bin/env python3
"""The book as a page, in a real browser without a window: testar_pagina.py LIVRO SAMPLES

Makes the page, adds a script of checks to its end and reads what the browser then holds. Says with 77 that there is no
browser."""
import html
import os
import re
import shutil
import subprocess
import sys
import tempfile

CHECKS = r"""
<pre id="resultado"></pre><script>
(async function () {
  var achados = [];
  function exigir(certo, texto) { if (!certo) achados.push(texto); }
  function espera(ms) { return new Promise(function (r) { setTimeout(r, ms); }); }
  function q(s) { return document.querySelector(s); }
  function todos(s) { return Array.from(document.querySelectorAll(s)); }
  function botao(t) { return todos('article.aberta button, #compras button').find(function (b) { return b.textContent === t; }); }
  async function abrir(nome) {
    location.hash = '#lista'; await espera(50);
    todos('#lista a').find(function (a) { return a.textContent.indexOf(nome) >= 0; }).click(); await espera(50);
  }
  function linhas() { return todos('article.aberta .ingredientes>li').map(function (l) { return (l.querySelector('span') || l).textContent; }); }
  function vistas() { return todos('#lista li').filter(function (l) { return !l.hidden; }).map(function (l) { return l.querySelector('b').textContent; }); }
  try {
    localStorage.clear();
    q('#busca').value = 'PIRAO'; q('#busca').dispatchEvent(new Event('input')); await espera(200);
    exigir(vistas().join() === 'Moqueca capixaba & pirão', 'search: ' + vistas());
    q('#onde').value = 'ingrediente'; q('#busca').value = 'acucar leite'; q('#onde').dispatchEvent(new Event('change')); await espera(50);
    exigir(vistas().length === 3, 'by ingredient: ' + vistas());
    q('#busca').value = ''; q('#tipo').value = 'Sopas'; q('#tipo').dispatchEvent(new Event('change')); await espera(50);
    exigir(vistas().join() === 'Caldo verde,Sopa de abóbora', 'by type: ' + vistas());

    await abrir('Bolo de milho');
    exigir(getComputedStyle(q('article.aberta')).display === 'block' && getComputedStyle(q('#lista')).display === 'none', 'one recipe at a time');
    botao('Metade').click();
    exigir(linhas().join('|').indexOf('1/4 xícara (chá) de óleo|3/4 xícara (chá) de fubá') >= 0, 'half: ' + linhas());
    botao('Original').click(); botao('Dobro').click();
    exigir(linhas()[4] === '3 xícaras (chá) de fubá' && linhas()[7] === 'Manteiga para untar', 'double: ' + linhas());
    exigir(todos('article.aberta p').some(function (p) { return /continuam as originais/.test(p.textContent) && !p.hidden; }), 'says what is not scaled');
    botao('Pôr na lista de compras').click();
    q('article.aberta .ingredientes>li').click();
    exigir(q('article.aberta .riscado>button').getAttribute('aria-pressed') === 'true', 'struck through');
    exigir(/riscos/.test(localStorage.getItem('cozinhario-livro')), 'kept');
    q('article.aberta .tempo').click(); await espera(100);
    exigir(/^(40:00|39:59)/.test(q('.relogio time').textContent), 'timer: ' + q('.relogio').textContent);
    q('.relogio button').click();
    exigir(!q('.relogio'), 'timer stopped');
    botao('Cozinhar').click(); await espera(50);
    exigir(q('#cozinha').open && q('#cozinha .conta').textContent === 'Ingredientes', 'ingredients first');
    q('#cozinha .depois').dispatchEvent(new KeyboardEvent('keydown', {key: 'ArrowRight', bubbles: true}));
    exigir(q('#cozinha .conta').textContent === 'Passo 1 de 3', 'a step: ' + q('#cozinha .conta').textContent);
    q('#cozinha').close();

    await abrir('Pudim'); botao('Pôr na lista de compras').click();
    await abrir('Vinagrete'); botao('Dobro').click();
    exigir(linhas().indexOf('sal e pimenta a gosto') >= 0 && linhas().indexOf('1 pimentão verde') >= 0, 'left alone: ' + linhas());
    await abrir('Brownie'); botao('Pôr na lista de compras').click();
    location.hash = '#compras'; await espera(50);
    var compras = todos('#compras input[type=checkbox]').map(function (c) { return c.parentNode.textContent; });
    exigir(compras.some(function (c) { return c.indexOf('17 ovos (') === 0; }), 'merged: ' + compras);
    exigir(compras.some(function (c) { return c.indexOf('500 ml de leite') === 0; }), 'units as they are: ' + compras);
    q('#compras input[type=checkbox]').click();
    var marcas = todos('#compras input[type=checkbox]');
    exigir(marcas[marcas.length - 1].checked, 'ticked, at the end');
    botao('Esvaziar').click();
    exigir(/vazia/.test(q('#compras').textContent), 'emptied');
    exigir(performance.getEntriesByType('resource').every(function (r) { return !/^http/.test(r.name); }), 'nothing from the network');
  } catch (e) { achados.push(String(e.stack || e)); }
  q('#resultado').textContent = 'CHECKED ' + achados.join(' ## ');
})();
</script>
"""


def navegar(navegador, pasta, pagina, *opcoes):
    comando = [navegador, "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={pasta}/perfil", "--window-size=390,844",
               "--virtual-time-budget=20000", *opcoes, "--dump-dom", "file://" + pagina]
    return subprocess.run(comando, capture_output=True, timeout=100, check=True).stdout.decode("utf-8")


def main():
    livro, amostras = sys.argv[1:]
    navegador = shutil.which("chromium") or shutil.which("chromium-browser")
    if not navegador:
        print("not installed: chromium")
        sys.exit(77)
    with tempfile.TemporaryDirectory() as pasta:
        pacote, pagina = os.path.join(pasta, "a.lr$"), os.path.join(pasta, "a.html")
        subprocess.run([livro, "converter", amostras, "-o", pacote], check=True, capture_output=True)
        subprocess.run([livro, "pagina", "--de", pacote, "-o", pagina], check=True, capture_output=True)
        texto = open(pagina, encoding="utf-8").read()
        com_provas = os.path.join(pasta, "b.html")
        open(com_provas, "w", encoding="utf-8").write(texto.replace("</body>", CHECKS + "</body>"))
        dom = navegar(navegador, pasta, com_provas)
        resultado = html.unescape(re.search(r'<pre id="resultado">(.*?)</pre>', dom, re.S).group(1))
        print(resultado)
        if resultado.strip() != "CHECKED":
            sys.exit(1)


if __name__ == "__main__":
    main()
