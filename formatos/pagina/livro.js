(function () {
'use strict';
var D = document, raiz = D.documentElement, pedir = function (id) { return D.getElementById(id); };
var CHAVE = 'cozinhario-livro', memoria = {riscos: {}, compras: [], feitos: {}};
try { memoria = Object.assign(memoria, JSON.parse(localStorage.getItem(CHAVE)) || {}); } catch (e) { /* works without */ }
function guardar() { try { localStorage.setItem(CHAVE, JSON.stringify(memoria)); } catch (e) { /* works without */ } }

var dados = null, porId = {};
function receitas() {
  if (!dados) {
    dados = [];
    D.querySelectorAll('script[type="application/ld+json"]').forEach(function (s) {
      dados = dados.concat(JSON.parse(s.textContent));
    });
    dados.forEach(function (r) { porId[r['@id'].slice(1)] = r; });
  }
  return dados;
}
function receita(id) { receitas(); return porId[id]; }
function plano(t) { return t.normalize('NFD').replace(/[\u0300-\u036f]/g, '').toLowerCase(); }
function novo(nome, texto, classe) {
  var e = D.createElement(nome);
  if (texto !== undefined) e.textContent = texto;
  if (classe) e.className = classe;
  return e;
}
function botao(texto, fazer, classe) {
  var b = novo('button', texto, classe);
  b.type = 'button';
  b.addEventListener('click', fazer);
  return b;
}
function dizer(texto) { pedir('voz').textContent = texto; }

/* ---- quantities ---- */
var FRACOES = [[0, ''], [1 / 8, '1/8'], [1 / 4, '1/4'], [1 / 3, '1/3'], [3 / 8, '3/8'], [1 / 2, '1/2'], [5 / 8, '5/8'],
               [2 / 3, '2/3'], [3 / 4, '3/4'], [7 / 8, '7/8'], [1, '']];
var SINAIS = {'½': '1/2', '¼': '1/4', '¾': '3/4'};
function valor(t) {
  if (/^[1-9]\d{0,2}(\.\d{3})+$/.test(t)) return +t.replace(/\./g, '');
  return t.split(' ').reduce(function (soma, p) {
    var f = p.split('/');
    return soma + (f.length === 2 ? f[0] / f[1] : +p.replace(',', '.'));
  }, 0);
}
function numero(n, modelo, unidade) {
  if (/,/.test(modelo)) return String(Math.round(n * 100) / 100).replace('.', ',');
  if (n >= 10) {
    n = /^(g|gr|gramas?|ml|mililitros?)$/i.test(unidade) ? Math.round(n / 5) * 5 : Math.round(n);
    var t = String(n);
    return /\d\.\d{3}/.test(modelo) ? t.replace(/\B(?=(\d{3})+$)/g, '.') : t;
  }
  var inteiro = Math.floor(n + 1e-9), resto = n - inteiro, melhor = FRACOES[0];
  FRACOES.forEach(function (f) { if (Math.abs(f[0] - resto) < Math.abs(melhor[0] - resto) - 1e-9) melhor = f; });
  if (melhor[0] === 1) { inteiro += 1; melhor = FRACOES[0]; }
  if (inteiro === 0 && melhor[0] === 0) return n > 0 ? '1/8' : '0';
  return (inteiro ? inteiro + (melhor[1] ? ' ' : '') : '') + melhor[1];
}
var NUMERO = /\d+ \d+\/\d+|\d+\/\d+|\d+(?:[.,]\d+)*/g;
function escalar(q, fator, unidade) {
  if (fator === 1 || !q) return q;
  q = q.replace(/(\d)?([½¼¾])/g, function (t, antes, s) { return (antes ? antes + ' ' : '') + SINAIS[s]; });
  var vez = 0, soPrimeiro = /\d\s*[x×]\s*\d/i.test(q);
  return q.replace(NUMERO, function (t) {
    vez += 1;
    return soPrimeiro && vez > 1 ? t : numero(valor(t) * fator, t, unidade);
  });
}
function ultimo(q) { var n = q.match(NUMERO); return n ? valor(n[n.length - 1]) : 0; }
function flexionar(unidade, q) {
  var n = ultimo(q), partes = unidade.split(' '), cabeca = partes[0].toLowerCase();
  if (!n) return unidade;
  var par = n >= 2 ? PLURAIS[cabeca] : SINGULARES[cabeca];
  if (par) partes[0] = par;
  return partes.join(' ');
}
var SINGULARES = {}, PLURAIS = JSON.parse(pedir('plurais').textContent);
Object.keys(PLURAIS).forEach(function (s) { SINGULARES[PLURAIS[s]] = s; });
var LIVRES = /^(a gosto|q\.b\.|à vontade|to taste|as needed)$/i;
var INGLES = /^(cup|tablespoon|tbsp|tbs|teaspoon|tsp|pound|ounce|pint|quart|gallon|gram|liter|clove|can|package|pkg|stick|slice|pinch|dash|bunch|sprig|head|jar|bag|box|bottle|piece|handful)(s|es)?\.?$/i;
function linhaTexto(l, fator) {
  var q = escalar(l[0], fator, l[1]), u = fator === 1 ? l[1] : flexionar(l[1], q), i = l[2];
  if (!u && LIVRES.test(q)) return i + ' ' + q;
  var t = q + (u ? (q ? ' ' : '') + u : '');
  if (!t) return i;
  return t + (u && !INGLES.test(u) && !/^(e |ou |\+|\()/i.test(i) ? ' de ' : ' ') + i;
}
function eTitulo(l) { return !l[0] && !l[1] && /:$/.test(l[2]); }
function linhas(r) { return (r.cozinhario && r.cozinhario.linhas) || []; }
function passos(r) { return r.recipeInstructions || []; }
function porcoes(r) { var n = parseFloat(String((r.cozinhario || {}).porcoes || '').replace(',', '.')); return n > 0 ? n : 0; }

/* ---- list and search ---- */
var itens = [], indice = null, espera = 0;
function montarIndice() {
  if (indice) return;
  indice = receitas().map(function (r) {
    return {nome: plano(r.name), tipo: r.recipeCategory || '',
            ingredientes: plano(linhas(r).map(function (l) { return l[2]; }).join('\n'))};
  });
}
function filtrar() {
  var palavras = plano(pedir('busca').value).split(/\s+/).filter(Boolean), onde = pedir('onde').value,
      tipo = pedir('tipo').value, quantas = 0;
  if (palavras.length || tipo) montarIndice();
  itens.forEach(function (li, i) {
    var ok = true;
    if (palavras.length || tipo) {
      var r = indice[i], alvo = onde === 'nome' ? r.nome : onde === 'ingrediente' ? r.ingredientes
                                                         : r.nome + '\n' + plano(r.tipo) + '\n' + r.ingredientes;
      ok = (!tipo || r.tipo === tipo) && palavras.every(function (p) { return alvo.indexOf(p) >= 0; });
    }
    if (li.hidden === ok) li.hidden = !ok;
    if (ok) quantas += 1;
  });
  pedir('achadas').textContent = quantas === 1 ? '1 receita' : quantas + ' receitas';
}
function prepararLista() {
  itens = Array.prototype.slice.call(D.querySelectorAll('#lista li'));
  var tipos = JSON.parse(pedir('tipos').textContent), escolha = pedir('tipo');
  tipos.forEach(function (t) { var o = novo('option', t); o.value = t; escolha.appendChild(o); });
  pedir('busca').addEventListener('input', function () { clearTimeout(espera); espera = setTimeout(filtrar, 80); });
  ['tipo', 'onde'].forEach(function (id) { pedir(id).addEventListener('change', filtrar); });
  pedir('ferramentas').addEventListener('submit', function (e) { e.preventDefault(); filtrar(); });
  if (!('IntersectionObserver' in window)) return;
  var olho = new IntersectionObserver(function (vistos) {
    vistos.forEach(function (v) {
      if (!v.isIntersecting) return;
      olho.unobserve(v.target);
      var n = pedir('n' + v.target.dataset.r), grande = n && /<img [^>]*?src="([^"]*)"/.exec(n.textContent);
      if (grande) {
        var foto = novo('img', undefined, 'foto');
        foto.alt = '';
        foto.src = grande[1];
        v.target.firstElementChild.insertBefore(foto, v.target.firstElementChild.firstChild);
      }
    });
  }, {rootMargin: '300px'});
  itens.forEach(function (li) { if (li.dataset.r) olho.observe(li); });
}

/* ---- timers ---- */
var TEMPO = /(\d+(?:[.,]\d+)?|\bmeia)(?:\s*(?:a|até|ou|-|–)\s*\d+(?:[.,]\d+)?)?\s*(horas?|hs?|minutos?|mins?|segundos?|seg)(?![\wà-ú])(?:\s+e\s+(meia|\d+)(?:\s*(minutos?|mins?)(?![\wà-ú]))?(?!\s*[\wà-ú]))?/gi;
function segundos(m) {
  var n = /meia/i.test(m[1]) ? 0.5 : +m[1].replace(',', '.'), u = m[2][0].toLowerCase();
  var s = n * (u === 'h' ? 3600 : u === 'm' ? 60 : 1);
  if (m[3]) s += /meia/i.test(m[3]) ? (u === 'h' ? 1800 : 30) : +m[3] * (u === 'h' ? 60 : 1);
  return Math.round(s);
}
function comTempos(texto, nome) {
  var caixa = novo('span'), fim = 0, m;
  TEMPO.lastIndex = 0;
  while ((m = TEMPO.exec(texto))) {
    var s = segundos(m), t = m[0];
    if (m[3] && !m[4] && !/meia/i.test(m[3]) && !/^h/i.test(m[2])) { t = t.replace(/\s+e\s+\d+$/, ''); s = segundos([t, m[1], m[2]]); TEMPO.lastIndex = m.index + t.length; }
    if (!s || s > 172800) continue;
    caixa.appendChild(D.createTextNode(texto.slice(fim, m.index)));
    (function (quanto, rotulo) {
      var b = botao(rotulo, function (e) { e.stopPropagation(); ligarRelogio(quanto, nome); }, 'tempo');
      b.setAttribute('aria-label', 'Marcar tempo: ' + rotulo);
      caixa.appendChild(b);
    })(s, t);
    fim = m.index + t.length;
  }
  caixa.appendChild(D.createTextNode(texto.slice(fim)));
  return caixa;
}
var relogios = [], batida = 0;
function hms(s) {
  s = Math.max(0, Math.ceil(s));
  var h = Math.floor(s / 3600), m = Math.floor(s / 60) % 60, x = s % 60;
  return (h ? h + ':' + ('0' + m).slice(-2) : m) + ':' + ('0' + x).slice(-2);
}
function ligarRelogio(quanto, nome) {
  var caixa = novo('div', undefined, 'relogio'), r = {fim: Date.now() + quanto * 1000, nome: nome, caixa: caixa, hora: novo('time')};
  caixa.appendChild(novo('span', nome));
  caixa.appendChild(r.hora);
  var parar = botao('Parar', function () { relogios.splice(relogios.indexOf(r), 1); caixa.remove(); });
  parar.setAttribute('aria-label', 'Parar o tempo de ' + nome);
  caixa.appendChild(parar);
  pedir('relogios').appendChild(caixa);
  relogios.push(r);
  dizer('Tempo marcado: ' + nome + ', ' + hms(quanto));
  bater();
  if (!batida) batida = setInterval(bater, 250);
}
function bater() {
  relogios.forEach(function (r) {
    var falta = (r.fim - Date.now()) / 1000;
    r.hora.textContent = hms(falta);
    if (falta <= 0 && !r.tocou) {
      r.tocou = true;
      r.caixa.classList.add('fim');
      dizer('Terminou o tempo: ' + r.nome);
      apitar();
    }
  });
  if (!relogios.length) { clearInterval(batida); batida = 0; }
}
function apitar() {
  try {
    var a = new (window.AudioContext || window.webkitAudioContext)();
    [0, .4, .8].forEach(function (t) {
      var o = a.createOscillator(), g = a.createGain();
      o.frequency.value = 880; g.gain.value = .25;
      o.connect(g); g.connect(a.destination);
      o.start(a.currentTime + t); o.stop(a.currentTime + t + .25);
    });
  } catch (e) { /* silent */ }
  if (navigator.vibrate) try { navigator.vibrate([300, 200, 300]); } catch (e) { /* silent */ }
}

/* ---- screen awake ---- */
var acesa = null, querAcesa = false;
function manterAcesa(sim) {
  querAcesa = sim;
  if (!sim) { if (acesa) { acesa.release().catch(function () {}); acesa = null; } return; }
  if (acesa || !('wakeLock' in navigator) || D.visibilityState !== 'visible') return;
  navigator.wakeLock.request('screen').then(function (l) {
    acesa = l;
    l.addEventListener('release', function () { acesa = null; });
  }).catch(function () {});
}
D.addEventListener('visibilitychange', function () { if (querAcesa) manterAcesa(true); });

/* ---- one recipe ---- */
var aberta = null;
function riscavel(li, id, chave, rotulo, marca) {
  var riscos = memoria.riscos[id] || (memoria.riscos[id] = {});
  var b = botao(marca, null);
  function mostrar() {
    li.classList.toggle('riscado', !!riscos[chave]);
    b.setAttribute('aria-pressed', riscos[chave] ? 'true' : 'false');
    b.setAttribute('aria-label', (marca ? marca + ', riscar: ' : 'Riscar: ') + rotulo());
  }
  function trocar(e) {
    if (e.target.closest('.tempo')) return;
    if (riscos[chave]) delete riscos[chave]; else riscos[chave] = 1;
    mostrar();
    guardar();
  }
  li.classList.add('riscavel');
  li.addEventListener('click', trocar);
  li.insertBefore(b, li.firstChild);
  mostrar();
  return mostrar;
}
function decorar(artigo) {
  if (artigo.dataset.pronta) return;
  artigo.dataset.pronta = '1';
  var id = artigo.id, r = receita(id), original = porcoes(r), fator = 1, mostradas = [], riscaveis = [];
  if (!r) return;
  var ls = linhas(r), lis = artigo.querySelectorAll('.ingredientes>li');
  ls.forEach(function (l, i) {
    var li = lis[i];
    if (!li || eTitulo(l)) return;
    var texto = novo('span', linhaTexto(l, 1));
    li.textContent = '';
    li.appendChild(texto);
    var mostrar = riscavel(li, id, 'i' + i, function () { return texto.textContent; }, '');
    riscaveis.push(mostrar);
    mostradas.push(function () { texto.textContent = linhaTexto(l, fator); mostrar(); });
  });
  var numeroDoPasso = 0;
  artigo.querySelectorAll('.modo>li').forEach(function (li, i) {
    var texto = li.textContent;
    if (li.classList.contains('grupo')) return;
    numeroDoPasso += 1;
    li.textContent = '';
    li.appendChild(comTempos(texto, r.name + ', passo ' + numeroDoPasso));
    riscaveis.push(riscavel(li, id, 'p' + i, function () { return texto; }, String(numeroDoPasso)));
  });
  var nota = novo('p', 'As quantidades do modo de preparar continuam as originais.', 'fraco');
  nota.hidden = true;
  var campo = novo('input', undefined, 'quantos');
  campo.type = 'number'; campo.min = '0.25'; campo.step = 'any'; campo.inputMode = 'decimal';
  function escala(f, deFora) {
    if (!(f > 0) || f > 1000) return;
    fator = f;
    nota.hidden = f === 1;
    if (!deFora) campo.value = Math.round((original || 1) * f * 100) / 100;
    artigo.dataset.fator = f;
    mostradas.forEach(function (m) { m(); });
  }
  campo.value = original || 1;
  campo.id = 'quantos-' + id;
  campo.addEventListener('input', function () { escala(parseFloat(campo.value) / (original || 1), true); });
  var barra = novo('div', undefined, 'barra nao-imprime'), rotulo = novo('label', original ? 'Porções:' : 'Vezes:');
  rotulo.htmlFor = campo.id;
  barra.append(rotulo, campo, botao('Metade', function () { escala(fator / 2); }), botao('Dobro', function () { escala(fator * 2); }),
               botao('Original', function () { escala(1); }));
  var outra = novo('div', undefined, 'barra nao-imprime');
  outra.append(botao('Cozinhar', function () { cozinhar(r, id, fator); }, 'forte'),
               botao('Pôr na lista de compras', function () { porNasCompras(id, fator); }),
               botao('Imprimir', function () { window.print(); }),
               botao('Tirar os riscos', function () {
                 var riscos = memoria.riscos[id] || {};
                 Object.keys(riscos).forEach(function (k) { delete riscos[k]; });
                 guardar();
                 riscaveis.forEach(function (m) { m(); });
               }));
  var titulo = artigo.querySelector('h3');
  artigo.insertBefore(outra, titulo);
  artigo.insertBefore(barra, titulo);
  artigo.insertBefore(nota, titulo);
  var volta = novo('p', undefined, 'nao-imprime'), a = novo('a', '← Todas as receitas');
  a.href = '#lista';
  volta.appendChild(a);
  artigo.insertBefore(volta, artigo.firstChild);
}

/* ---- a step at a time ---- */
function cozinhar(r, id, fator) {
  var d = pedir('cozinha'), cartoes = [], onde = 0, secao = '';
  var ingredientes = novo('div');
  ingredientes.appendChild(novo('h2', r.name));
  var ul = novo('ul');
  linhas(r).forEach(function (l) { ul.appendChild(novo('li', eTitulo(l) ? l[2] : linhaTexto(l, fator))); });
  ingredientes.appendChild(ul);
  cartoes.push(ingredientes);
  passos(r).forEach(function (t) {
    if (/:$/.test(t) && t.length < 60) { secao = t.slice(0, -1); return; }
    var c = novo('div');
    if (secao) c.appendChild(novo('h2', secao));
    var p = novo('p');
    p.appendChild(comTempos(t, r.name + ', passo ' + cartoes.length));
    c.appendChild(p);
    cartoes.push(c);
  });
  var cartao = d.querySelector('.cartao'), conta = d.querySelector('.conta'), antes = d.querySelector('.antes'),
      depois = d.querySelector('.depois'), barra = d.querySelector('progress');
  function ir(n) {
    if (n >= cartoes.length) { d.close(); return; }
    onde = Math.max(0, n);
    cartao.textContent = '';
    cartao.appendChild(cartoes[onde]);
    conta.textContent = onde === 0 ? 'Ingredientes' : 'Passo ' + onde + ' de ' + (cartoes.length - 1);
    antes.disabled = onde === 0;
    depois.textContent = onde === cartoes.length - 1 ? 'Terminar' : 'Próximo';
    barra.max = Math.max(1, cartoes.length - 1);
    barra.value = onde;
    d.scrollTop = 0;
  }
  antes.onclick = function () { ir(onde - 1); };
  depois.onclick = function () { ir(onde + 1); };
  d.querySelector('.fechar').onclick = function () { d.close(); };
  cartao.onclick = function (e) { if (!e.target.closest('button')) ir(onde + 1); };
  d.onkeydown = function (e) {
    if (e.ctrlKey || e.altKey || e.metaKey) return;
    var noBotao = e.target.closest('button');
    if (e.key === 'ArrowLeft' || e.key === 'PageUp' || e.key === 'Backspace') ir(onde - 1);
    else if (e.key === 'ArrowRight' || e.key === 'PageDown' || ((e.key === ' ' || e.key === 'Enter') && !noBotao)) ir(onde + 1);
    else return;
    e.preventDefault();
  };
  var x = null;
  d.ontouchstart = function (e) { x = e.touches[0].clientX; };
  d.ontouchend = function (e) {
    var dx = x === null ? 0 : e.changedTouches[0].clientX - x;
    x = null;
    if (Math.abs(dx) > 60) { e.preventDefault(); ir(onde + (dx < 0 ? 1 : -1)); }
  };
  ir(0);
  if (d.showModal) d.showModal(); else d.setAttribute('open', '');
  d.appendChild(pedir('relogios'));
  d.onclose = function () { D.body.appendChild(pedir('relogios')); };
  depois.focus();
}

/* ---- shopping list ---- */
function porNasCompras(id, fator) {
  memoria.compras = memoria.compras.filter(function (c) { return c.id !== id; });
  memoria.compras.push({id: id, fator: fator});
  guardar();
  contarCompras();
  dizer('Na lista de compras.');
}
function contarCompras() {
  var n = memoria.compras.filter(function (c) { return receita(c.id); }).length;
  pedir('ver-compras').textContent = 'Lista de compras' + (n ? ' (' + n + ')' : '');
}
function somar(a, b, unidade) {
  /* two quantities in one; null when they do not add up */
  var na = a.match(NUMERO) || [], nb = b.match(NUMERO) || [];
  if (!a && !b) return '';
  if (na.length !== 1 || nb.length !== 1 || na[0] !== a || nb[0] !== b) return a === b && !na.length ? a : null;
  var n = valor(a) + valor(b), modelo = /,/.test(a + b) ? '0,0' : a;
  return numero(n, modelo, n >= 10 && n % 5 && n === Math.round(n) ? '' : unidade);
}
function juntar() {
  var caixas = [], mapa = {};
  memoria.compras.forEach(function (c) {
    var r = receita(c.id);
    if (!r) return;
    linhas(r).forEach(function (l) {
      if (eTitulo(l)) return;
      var q = escalar(l[0], c.fator, l[1]).replace(/(\d)?([½¼¾])/g, function (t, antes, s) { return (antes ? antes + ' ' : '') + SINAIS[s]; }), u = l[1],
          cabeca = plano(u).split(' '), chave;
      cabeca[0] = plano(SINGULARES[u.split(' ')[0].toLowerCase()] || cabeca[0]);
      chave = plano(l[2]) + '|' + cabeca.join(' ');
      var juntos = (mapa[chave] || []).filter(function (x) { return somar(x.q, q, u) !== null; })[0];
      if (juntos) {
        juntos.q = somar(juntos.q, q, u);
        if (juntos.de.indexOf(r.name) < 0) juntos.de.push(r.name);
      } else {
        juntos = {q: q, u: u, i: l[2], de: [r.name], chave: chave + '|' + (mapa[chave] || []).length};
        (mapa[chave] = mapa[chave] || []).push(juntos);
        caixas.push(juntos);
      }
    });
  });
  caixas.sort(function (a, b) { return plano(a.i) < plano(b.i) ? -1 : 1; });
  return caixas;
}
function textoDoItem(x) { return linhaTexto([x.q, flexionar(x.u, x.q), x.i], 1); }
function mostrarCompras() {
  var caixa = pedir('compras');
  caixa.textContent = '';
  var volta = novo('p', undefined, 'nao-imprime'), a = novo('a', '← Todas as receitas');
  a.href = '#lista';
  volta.appendChild(a);
  var titulo = novo('h2', 'Lista de compras');
  titulo.tabIndex = -1;
  caixa.append(volta, titulo);
  var validas = memoria.compras.filter(function (c) { return receita(c.id); });
  if (!validas.length) { caixa.appendChild(novo('p', 'A lista está vazia. Abra uma receita e toque em "Pôr na lista de compras".')); return titulo; }
  var de = novo('ul');
  validas.forEach(function (c) {
    var r = receita(c.id), li = novo('li', undefined, 'barra'), n = porcoes(r), campo = novo('input', undefined, 'quantos'), rotulo = novo('label');
    campo.type = 'number'; campo.step = 'any'; campo.min = '0.25';
    campo.value = Math.round((n || 1) * c.fator * 100) / 100;
    rotulo.append(r.name + (n ? ', porções: ' : ', vezes: '), campo);
    campo.addEventListener('change', function () {
      var f = parseFloat(campo.value) / (n || 1);
      if (f > 0 && f <= 1000) { c.fator = f; guardar(); mostrarCompras(); }
    });
    var fora = botao('Tirar', function () { memoria.compras.splice(memoria.compras.indexOf(c), 1); guardar(); contarCompras(); mostrarCompras().focus(); });
    fora.setAttribute('aria-label', 'Tirar da lista: ' + r.name);
    li.append(rotulo, fora);
    de.appendChild(li);
  });
  caixa.append(novo('h3', 'Receitas'), de, novo('h3', 'Comprar'));
  var lista = novo('ul'), itensDaLista = juntar();
  itensDaLista.sort(function (a, b) { return (memoria.feitos[a.chave] ? 1 : 0) - (memoria.feitos[b.chave] ? 1 : 0); });
  itensDaLista.forEach(function (x) {
    var li = novo('li'), rotulo = novo('label'), marca = novo('input'), texto = novo('span', textoDoItem(x));
    marca.type = 'checkbox';
    marca.checked = !!memoria.feitos[x.chave];
    if (marca.checked) texto.className = 'feito';
    var origem = novo('span', ' (' + x.de.join(', ') + ')', 'fraco');
    texto.appendChild(origem);
    marca.addEventListener('change', function () {
      if (marca.checked) memoria.feitos[x.chave] = 1; else delete memoria.feitos[x.chave];
      texto.className = marca.checked ? 'feito' : '';
      if (marca.checked) lista.appendChild(li);
      marca.focus();
      guardar();
    });
    rotulo.append(marca, texto);
    li.appendChild(rotulo);
    lista.appendChild(li);
  });
  var pe = novo('div', undefined, 'barra nao-imprime');
  pe.append(botao('Copiar como texto', function () {
    var t = itensDaLista.filter(function (x) { return !memoria.feitos[x.chave]; }).map(textoDoItem).join('\n');
    function feito() { dizer('Lista copiada.'); }
    if (navigator.clipboard) navigator.clipboard.writeText(t).then(feito, function () { copiarAMao(t); feito(); });
    else { copiarAMao(t); feito(); }
  }), botao('Imprimir', function () { window.print(); }), botao('Esvaziar', function () {
    memoria.compras = []; memoria.feitos = {}; guardar(); contarCompras(); mostrarCompras().focus();
  }));
  caixa.append(lista, pe);
  return titulo;
}
function copiarAMao(t) {
  var area = novo('textarea');
  area.value = t;
  D.body.appendChild(area);
  area.select();
  try { D.execCommand('copy'); } catch (e) { /* nothing more to do */ }
  area.remove();
}

/* ---- where we are ---- */
var rolagem = 0;
/* Where scripts run a recipe is text until it is opened: thousands of them cost nothing. */
function artigoDe(id) {
  var pronto = pedir(id), n = pedir('n' + id.slice(1));
  if (pronto || !n) return pronto;
  var molde = D.createElement('template');
  molde.innerHTML = n.textContent;
  return pedir('receitas').appendChild(molde.content.firstElementChild);
}
function ir() {
  var onde = '';
  try { onde = decodeURIComponent(location.hash.slice(1)); } catch (e) { /* no name of ours */ }
  var artigo = /^r\d+$/.test(onde) ? artigoDe(onde) : null;
  if (aberta) aberta.classList.remove('aberta');
  else if (!pedir('compras').hidden || !raiz.classList.contains('vendo')) rolagem = rolagem || window.scrollY;
  aberta = artigo;
  pedir('compras').hidden = onde !== 'compras';
  raiz.classList.toggle('vendo', !!artigo || onde === 'compras');
  manterAcesa(!!artigo);
  var foco = null;
  if (artigo) {
    decorar(artigo);
    artigo.classList.add('aberta');
    foco = artigo.querySelector('h2');
    D.title = foco.textContent;
  } else {
    D.title = TITULO;
    if (onde === 'compras') foco = mostrarCompras();
  }
  if (foco) { foco.tabIndex = -1; foco.focus({preventScroll: true}); window.scrollTo(0, 0); }
  else { window.scrollTo(0, rolagem); rolagem = 0; }
}
D.addEventListener('click', function (e) {
  var a = e.target.closest && e.target.closest('#lista a');
  if (a) rolagem = window.scrollY;
});
var TITULO = D.title;
prepararLista();
pedir('ferramentas').hidden = false;
if (memoria.compras.length) contarCompras();
window.addEventListener('hashchange', ir);
(window.requestIdleCallback || setTimeout)(montarIndice);
if (location.hash && location.hash !== '#lista') ir();
})();
