#!/usr/bin/env python3
"""Writes the drawings of the dishes, one SVG file each, 480 x 400 units.

They share one table, one light (from the top left) and one set of plates; crumbs, beans and sprinkles are
strewn from a fixed seed, so that the same script always writes the same files. Only what Qt Svg draws is
used: no filters, clips, masks or style sheets.
"""

import math
import random
from pathlib import Path

PASTA = Path(__file__).resolve().parent


def n(valor):
    """A coordinate, short."""
    return f"{valor:.1f}".rstrip("0").rstrip(".")


class Desenho:
    """Collects the elements of one picture and the gradients they use."""

    def __init__(self, nome):
        self.nome = nome
        self.acaso = random.Random(nome)
        self.definicoes = []
        self.elementos = []

    # --- colours ---

    def radial(self, nome, claro, escuro, cx=0.38, cy=0.32, r=0.75):
        self.definicoes.append(
            f'<radialGradient id="{nome}" cx="{cx}" cy="{cy}" r="{r}">'
            f'<stop offset="0" stop-color="{claro}"/><stop offset="1" stop-color="{escuro}"/></radialGradient>'
        )
        return f"url(#{nome})"

    def linear(self, nome, claro, escuro, x2=0, y2=1):
        self.definicoes.append(
            f'<linearGradient id="{nome}" x1="0" y1="0" x2="{x2}" y2="{y2}">'
            f'<stop offset="0" stop-color="{claro}"/><stop offset="1" stop-color="{escuro}"/></linearGradient>'
        )
        return f"url(#{nome})"

    # --- elements; `mais` holds further attributes ---

    def por(self, texto):
        self.elementos.append(texto)

    def caminho(self, d, cor, mais=""):
        self.por(f'<path d="{d}" fill="{cor}" {mais}/>')

    def traco(self, d, cor, largura, mais=""):
        self.por(
            f'<path d="{d}" fill="none" stroke="{cor}" stroke-width="{n(largura)}" '
            f'stroke-linecap="round" stroke-linejoin="round" {mais}/>'
        )

    def elipse(self, cx, cy, rx, ry, cor, mais=""):
        self.por(f'<ellipse cx="{n(cx)}" cy="{n(cy)}" rx="{n(rx)}" ry="{n(ry)}" fill="{cor}" {mais}/>')

    def circulo(self, cx, cy, r, cor, mais=""):
        self.elipse(cx, cy, r, r, cor, mais)

    def girado(self, cx, cy, graus):
        return f'transform="rotate({n(graus)} {n(cx)} {n(cy)})"'

    # --- what every picture has ---

    def mesa(self, claro, escuro, xadrez):
        """A table cloth with a check."""
        self.por(f'<rect width="480" height="400" fill="{self.linear("mesa", claro, escuro)}"/>')
        linhas = "".join(f"M{x} 0V400" for x in range(30, 480, 60)) + "".join(
            f"M0 {y}H480" for y in range(20, 400, 60)
        )
        self.por(f'<path d="{linhas}" fill="none" stroke="{xadrez}" stroke-opacity="0.35" stroke-width="22"/>')

    def sombra(self, cx, cy, rx, ry):
        if not any('id="sombra"' in texto for texto in self.definicoes):
            self.definicoes.append(
                '<radialGradient id="sombra" cx="0.5" cy="0.5" r="0.5"><stop offset="0.6" stop-color="#201008" stop-opacity="0.38"/>'
                '<stop offset="1" stop-color="#201008" stop-opacity="0"/></radialGradient>'
            )
        self.elipse(cx, cy, rx, ry, "url(#sombra)")

    def prato(self, cx, cy, rx, ry, claro="#ffffff", escuro="#d9dfec", borda="#4c86d8"):
        """A plate; seen from above when rx and ry are equal."""
        self.sombra(cx + 6, cy + 12, rx + 16, ry + 14)
        self.elipse(cx, cy, rx, ry, self.linear("prato", claro, escuro, 0.5))
        self.elipse(cx, cy, rx * 0.945, ry * 0.935, "none", f'stroke="{borda}" stroke-width="4"')
        self.elipse(cx, cy, rx * 0.75, ry * 0.74, self.linear("fundo", escuro, claro, 0.5))

    def panela(self, r, claro, escuro, dentro_claro, dentro_escuro, alcas=True):
        """A round pot of clay seen from above, filled."""
        cx, cy = 240, 202
        self.sombra(cx + 6, cy + 14, r + 26, r + 26)
        if alcas:
            for lado in (-1, 1):
                self.por(
                    f'<rect x="{n(cx + lado * r - 22)}" y="{cy - 34}" width="44" height="68" rx="20" '
                    f'fill="{escuro}"/>'
                )
        self.circulo(cx, cy, r, self.linear("barro", claro, escuro, 0.6))
        self.circulo(cx, cy, r - 18, escuro)
        self.circulo(cx, cy + 2, r - 23, self.radial("caldo", dentro_claro, dentro_escuro))
        return cx, cy, r - 26

    def espalhar(self, quantos, cx, cy, raio, afastamento):
        """Points within a circle, not too near one another, from the centre's neighbourhood outward."""
        pontos = []
        for _ in range(quantos * 60):
            if len(pontos) == quantos:
                break
            a, d = self.acaso.uniform(0, math.tau), raio * math.sqrt(self.acaso.random())
            x, y = cx + d * math.cos(a), cy + d * math.sin(a)
            if all(math.hypot(x - px, y - py) >= afastamento for px, py in pontos):
                pontos.append((x, y))
        return pontos

    def folha(self, x, y, tamanho, graus, cor, nervura):
        t = tamanho
        self.por(f'<g transform="translate({n(x)} {n(y)}) rotate({n(graus)})">')
        self.caminho(f"M0 0C{n(t*.3)} {n(-t*.45)} {n(t*.8)} {n(-t*.35)} {n(t)} 0C{n(t*.8)} {n(t*.35)} {n(t*.3)} {n(t*.45)} 0 0Z", cor)
        self.traco(f"M{n(t*.08)} 0H{n(t*.85)}", nervura, max(1.5, t * 0.045))
        self.por("</g>")

    def rodela_de_linguica(self, x, y, r):
        self.circulo(x + 2, y + 3, r, "#3a0d08", 'fill-opacity="0.35"')
        self.circulo(x, y, r, "#8c2a1a")
        self.circulo(x, y, r * 0.86, "#c9553a")
        for px, py in self.espalhar(7, x, y, r * 0.66, r * 0.36):
            self.circulo(px, py, r * 0.11, "#f3b79c")

    def rodela_de_citrico(self, x, y, r, casca, polpa, miolo="#fff6dd"):
        self.circulo(x + 3, y + 4, r, "#201008", 'fill-opacity="0.25"')
        self.circulo(x, y, r, casca)
        self.circulo(x, y, r * 0.9, miolo)
        for i in range(8):
            a, b = math.tau * (i + 0.08) / 8, math.tau * (i + 0.92) / 8
            q = r * 0.8
            self.caminho(
                f"M{n(x + r*.1*math.cos((a+b)/2))} {n(y + r*.1*math.sin((a+b)/2))}"
                f"L{n(x + q*math.cos(a))} {n(y + q*math.sin(a))}"
                f"A{n(q)} {n(q)} 0 0 1 {n(x + q*math.cos(b))} {n(y + q*math.sin(b))}Z",
                polpa,
            )

    def gravar(self):
        definicoes = "\n".join("  " + texto for texto in self.definicoes)
        elementos = "\n".join(" " + " ".join(texto.split()).replace(" />", "/>") for texto in self.elementos)
        (PASTA / f"{self.nome}.svg").write_text(
            '<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" '
            'width="480" height="400" viewBox="0 0 480 400">\n'
            f" <defs>\n{definicoes}\n </defs>\n{elementos}\n</svg>\n",
            encoding="utf-8",
        )


def pao_de_queijo():
    d = Desenho("pao-de-queijo")
    d.mesa("#fdf3dc", "#f4dfb2", "#e58f6a")
    d.sombra(244, 322, 190, 44)
    massa = d.radial("massa", "#ffe9a8", "#d78a2a")
    d.elipse(240, 236, 172, 50, "#8a5423")
    posicoes = [(128, 214, 44), (206, 218, 46), (284, 216, 45), (356, 214, 43),
                (164, 160, 45), (242, 154, 48), (318, 162, 44), (202, 100, 44), (280, 104, 45)]
    for x, y, r in sorted(posicoes, key=lambda p: p[1]):
        d.elipse(x + 3, y + 6, r, r * 0.9, "#6b3a10", 'fill-opacity="0.35"')
        d.elipse(x, y, r, r * 0.9, massa)
        for px, py in d.espalhar(6, x + 4, y + 6, r * 0.6, r * 0.3):
            d.elipse(px, py, r * 0.09, r * 0.06, "#b96c1c", 'fill-opacity="0.55"')
        d.traco(f"M{n(x - r*.55)} {n(y - r*.25)}A{n(r*.62)} {n(r*.62)} 0 0 1 {n(x - r*.05)} {n(y - r*.6)}",
                "#fffbe2", r * 0.12, 'stroke-opacity="0.8"')
    d.caminho("M66 232C120 268 360 268 414 232L392 312C388 334 340 346 240 346C140 346 92 334 88 312Z",
              d.linear("cesta", "#d79a55", "#99602a"))
    for linha, y in enumerate((262, 286, 310, 332)):
        a, b = 74 + linha * 7, 406 - linha * 7
        d.traco(f"M{a} {y - 12}C{a + 60} {y + 16} {b - 60} {y + 16} {b} {y - 12}", "#7c4a1c", 3, 'stroke-opacity="0.7"')
    for i in range(9):
        x = 92 + i * 37
        fim = 240 + (x - 240) * 0.88
        d.traco(f"M{x} {n(250 - abs(x - 240) * .06)}L{n(fim)} {n(342 - abs(fim - 240) * .1)}", "#f0c184", 5, 'stroke-opacity="0.55"')
    d.traco("M66 232C120 268 360 268 414 232", "#b97836", 14)
    d.traco("M66 230C120 265 360 265 414 230", "#e5b373", 5)
    return d


def coxinha():
    d = Desenho("coxinha")
    d.mesa("#e4f2ea", "#bcdccb", "#8cc3a4")
    d.prato(240, 240, 206, 118, borda="#d2352f")
    massa = d.radial("massa", "#f7c35c", "#a9581a", 0.36, 0.5, 0.7)
    for folha in ((84, 250, 46, -160), (100, 262, 44, 150), (392, 250, 46, -10), (380, 266, 44, 30)):
        d.folha(*folha, "#5aa544", "#3b7a2c")
    for x, y, t in ((190, 224, 0.9), (290, 224, 0.9), (142, 272, 1.0), (340, 272, 1.0), (240, 296, 1.12)):
        d.elipse(x + 6, y + 6, 60 * t, 22 * t, "#201008", 'fill-opacity="0.28"')
        d.por(f'<g transform="translate({x} {y}) scale({t})">')
        d.caminho("M0 -132C10 -112 16 -92 34 -70C56 -46 62 -28 52 -8C42 10 20 14 0 14C-20 14 -42 10 -52 -8"
                  "C-62 -28 -56 -46 -34 -70C-16 -92 -10 -112 0 -132Z", massa)
        for px, py in d.espalhar(46, 0, -28, 46, 8):
            d.circulo(px, py, d.acaso.uniform(1.3, 2.4), d.acaso.choice(("#ffe0a0", "#8a4212", "#e39a3c")),
                      'fill-opacity="0.8"')
        d.traco("M-32 -46C-28 -58 -20 -66 -14 -76", "#fff0c4", 7, 'stroke-opacity="0.75"')
        d.por("</g>")
    return d


def docinho(d, x, y, t, massa):
    """A ball of sweet; the points on which sprinkles stick to it."""
    d.elipse(x + 5, y + 46 * t, 60 * t, 20 * t, "#201008", 'fill-opacity="0.3"')
    d.circulo(x, y - 4 * t, 50 * t, massa)
    return d.espalhar(90, x, y - 4 * t, 47 * t, 6.4 * t)


def copinho(d, x, y, t, cor, prega):
    """The pleated paper cup of a sweet."""
    dentes = 9
    esquerda, direita = x - 60 * t, x + 60 * t
    topo = [f"{n(esquerda + (direita - esquerda) * i / (2 * dentes))} "
            f"{n(y + (8 if i % 2 else 0) * t + 10 * t * math.sin(math.pi * i / (2 * dentes)))}"
            for i in range(2 * dentes + 1)]
    d.caminho(f"M{topo[0]}L" + "L".join(topo[1:]) + f"L{n(x + 42*t)} {n(y + 52*t)}C{n(x + 20*t)} {n(y + 62*t)} {n(x - 20*t)} {n(y + 62*t)} {n(x - 42*t)} {n(y + 52*t)}Z", cor)
    for i in range(1, dentes * 2, 2):
        px = esquerda + (direita - esquerda) * i / (2 * dentes)
        d.traco(f"M{n(px)} {n(y + 16*t + 8*t*math.sin(math.pi*i/18))}L{n(x + (px - x) * .72)} {n(y + 54*t)}", prega, 2.4 * t, 'stroke-opacity="0.6"')


def brigadeiro():
    d = Desenho("brigadeiro")
    d.mesa("#fff0f3", "#fbd0da", "#f2a3b6")
    d.prato(240, 262, 214, 112, borda="#f2789a")
    massa = d.radial("massa", "#8d5230", "#3a1a0c")
    forminha = d.linear("forminha", "#ffd257", "#e8961c")
    for x, y, t in ((160, 168, 0.92), (320, 168, 0.92), (240, 206, 0.98), (120, 246, 1.02), (360, 246, 1.02), (240, 286, 1.08)):
        pontos = docinho(d, x, y, t, massa)
        for px, py in pontos:
            g = math.radians(d.acaso.uniform(0, 180))
            dx, dy = 5.2 * t * math.cos(g), 5.2 * t * math.sin(g)
            d.traco(f"M{n(px - dx)} {n(py - dy)}L{n(px + dx)} {n(py + dy)}",
                    d.acaso.choice(("#2a1006", "#5b2f19", "#a06a45", "#3d1c0e")), 4.2 * t)
        d.elipse(x - 17 * t, y - 26 * t, 12 * t, 7 * t, "#ffffff", 'fill-opacity="0.28" ' + d.girado(x - 17*t, y - 26*t, -35))
        copinho(d, x, y, t, forminha, "#b4690c")
    return d


def beijinho():
    d = Desenho("beijinho")
    d.mesa("#e2f0ff", "#b3d3f5", "#86b6e8")
    d.prato(240, 262, 214, 112, borda="#3f86dc")
    massa = d.radial("massa", "#fffdf4", "#e2cfa3")
    forminha = d.linear("forminha", "#8cc8fa", "#3f86dc")
    for x, y, t in ((160, 170, 0.96), (320, 170, 0.96), (118, 250, 1.06), (362, 250, 1.06), (240, 268, 1.22)):
        pontos = docinho(d, x, y, t, massa)
        for px, py in pontos[:60]:
            g = math.radians(d.acaso.uniform(0, 180))
            dx, dy = 5 * t * math.cos(g), 5 * t * math.sin(g)
            d.traco(f"M{n(px - dx)} {n(py - dy)}L{n(px + dx)} {n(py + dy)}", d.acaso.choice(("#ffffff", "#ffffff", "#d9c394")), 2.8 * t)
        d.traco(f"M{n(x)} {n(y - 28*t)}V{n(y - 46*t)}", "#4b2512", 5 * t)
        for a in (0, 90, 180, 270):
            d.circulo(x + 6 * t * math.cos(math.radians(a + 45)), y - 48 * t + 4 * t * math.sin(math.radians(a + 45)), 4.2 * t, "#6a3a1c")
        d.circulo(x, y - 49 * t, 4 * t, "#3a1a0c")
        copinho(d, x, y, t, forminha, "#1d5ca8")
    return d


def quindim():
    d = Desenho("quindim")
    d.mesa("#eef7e4", "#cfe6b4", "#a5cf80")
    d.prato(240, 264, 204, 104, borda="#3b9a41")
    d.elipse(240, 286, 142, 44, "#7a4a08", 'fill-opacity="0.35"')
    d.caminho("M96 258C96 300 160 322 240 322C320 322 384 300 384 258L372 248H108Z", d.linear("coco", "#f7dd95", "#d9a648"))
    for px, py in [(100 + d.acaso.random() * 280, 0) for _ in range(110)]:
        y = 262 + d.acaso.random() * (52 - abs(px - 240) * 0.24)
        g = math.radians(d.acaso.uniform(-40, 40))
        d.traco(f"M{n(px - 5*math.cos(g))} {n(y - 5*math.sin(g))}L{n(px + 5*math.cos(g))} {n(y + 5*math.sin(g))}",
                d.acaso.choice(("#fff3c9", "#c78a2c", "#fbe6a8")), 2.6)
    d.caminho("M96 262C92 190 132 118 240 118C348 118 388 190 384 262C372 284 310 296 240 296C170 296 108 284 96 262Z",
              d.radial("gema", "#fff07a", "#f0a000", 0.36, 0.25, 0.85))
    d.elipse(240, 150, 62, 21, "#c77800")
    d.elipse(240, 155, 56, 17, d.linear("furo", "#a86000", "#f5b81c"))
    d.traco("M128 226C130 190 146 164 172 148", "#fffbd6", 13, 'stroke-opacity="0.85"')
    d.traco("M126 248V246", "#fffbd6", 12, 'stroke-opacity="0.85"')
    d.traco("M330 160C346 176 354 194 357 214", "#fff3a0", 7, 'stroke-opacity="0.6"')
    return d


def pudim():
    d = Desenho("pudim")
    d.mesa("#f3ecff", "#d7c6f2", "#b79ae0")
    d.prato(240, 284, 222, 96, borda="#8a5bc8")
    d.elipse(240, 296, 186, 62, d.linear("calda", "#c4691a", "#7c3306"))
    d.elipse(190, 318, 50, 9, "#f3a64c", 'fill-opacity="0.55"')
    d.caminho("M130 134L100 282C110 320 370 320 380 282L350 134Z", d.linear("creme", "#ffe7a6", "#eeb458", 1, 0.3))
    d.caminho("M130 134C128 104 352 104 350 134L356 168C352 186 342 190 336 176C330 164 320 170 318 190C316 214 298 214 296 192"
              "C294 174 280 172 276 190C272 226 250 226 248 194C246 176 232 176 228 192C224 208 208 206 206 188C204 172 190 174 188 194"
              "C184 222 164 220 162 194C160 178 150 176 146 186C140 198 124 192 126 168Z", d.linear("caramelo", "#b55a14", "#7a3206"))
    d.elipse(240, 134, 110, 28, d.radial("topo", "#dc8a35", "#93430b"))
    d.elipse(240, 134, 36, 10, "#4a1d03")
    d.elipse(240, 137, 32, 8, "#6d2d06")
    d.traco("M150 132C158 122 178 116 200 113", "#ffd79b", 6, 'stroke-opacity="0.85"')
    d.traco("M136 214L126 268", "#fff8dc", 9, 'stroke-opacity="0.8"')
    return d


def bolo_de_cenoura():
    d = Desenho("bolo-de-cenoura")
    d.mesa("#e6f0ff", "#bfd6f7", "#93b7ec")
    d.prato(240, 296, 214, 84, borda="#ee7f1d")
    d.elipse(236, 312, 160, 34, "#201008", 'fill-opacity="0.3"')
    d.caminho("M92 176L320 232V322L92 272Z", d.linear("fatia", "#ffb45c", "#ef8a2a"))
    d.caminho("M320 200L396 140V246L320 322Z", d.linear("lado", "#e07a1e", "#b8560e"))
    for _ in range(90):
        x = d.acaso.uniform(98, 314)
        base = 176 + (x - 92) * 56 / 228
        y = base + d.acaso.uniform(30, 88)
        d.elipse(x, y, d.acaso.uniform(2, 5), d.acaso.uniform(1.4, 3), d.acaso.choice(("#ffd394", "#d96c12", "#ffc47a")), 'fill-opacity="0.75"')
    d.caminho("M92 152C130 118 200 108 260 112L396 136V164C390 178 384 166 378 176C372 196 360 196 356 186C350 178 344 194 336 206L320 222"
              "V240C314 258 302 254 298 240C294 228 284 232 282 246C278 266 262 262 260 240C258 222 246 222 242 232C238 246 224 244 222 226"
              "C220 212 208 214 206 226C204 244 188 240 186 220C184 206 172 206 170 216C166 228 154 224 152 210C150 198 138 200 136 212"
              "C132 228 118 222 116 204L92 190Z", d.linear("lateral", "#6f3a1e", "#3f1c0c"))
    d.caminho("M92 152C130 118 200 108 260 112L396 136L320 212Z", d.linear("chocolate", "#98593a", "#5d2d17", 1, 1))
    d.traco("M132 150C166 132 210 126 250 127", "#e6b592", 8, 'stroke-opacity="0.7"')
    for _ in range(34):
        u, v = d.acaso.random(), d.acaso.random()
        if u + v > 1:
            u, v = 1 - u, 1 - v
        x, y = 120 + u * 190 + v * 130 * 1.3, 150 + u * 46 - v * 22
        g = math.radians(d.acaso.uniform(0, 180))
        d.traco(f"M{n(x - 4*math.cos(g))} {n(y - 3*math.sin(g))}L{n(x + 4*math.cos(g))} {n(y + 3*math.sin(g))}", "#2c1206", 3.4)
    d.por('<g transform="translate(92 300) rotate(-14)">')
    d.caminho("M0 0C-8 -14 -4 -26 8 -26C30 -24 70 -10 88 2C70 12 30 22 8 20C-2 18 -4 8 0 0Z", d.linear("cenoura", "#ff9c3f", "#dd6412"))
    d.traco("M22 -14L30 -8M42 -8L49 -3M26 12L33 7M58 2L64 3", "#b84c06", 2.6)
    d.por("</g>")
    for graus in (150, 178, 206):
        d.folha(92, 300, 40, graus, "#63b04a", "#3c7f2d")
    return d


def feijoada():
    d = Desenho("feijoada")
    d.mesa("#fff3dd", "#f3d9a7", "#dca763")
    cx, cy, r = d.panela(172, "#c9703f", "#7a3514", "#4a2418", "#1d0d08")
    for px, py in d.espalhar(170, cx, cy, r - 8, 13.5):
        g = d.acaso.uniform(0, 180)
        d.elipse(px, py, 9.5, 6.6, d.acaso.choice(("#2b1512", "#381c16", "#20100d", "#43241b")), d.girado(px, py, g))
        d.elipse(px - 2, py - 2.4, 3.4, 1.6, "#b08a7c", 'fill-opacity="0.6" ' + d.girado(px - 2, py - 2.4, g))
    for x, y, g in ((176, 150, 18), (306, 250, -32), (180, 262, 60)):
        d.por(f'<g {d.girado(x, y, g)}>')
        d.por(f'<rect x="{x - 40}" y="{y - 24}" width="80" height="50" rx="15" fill="#201008" fill-opacity="0.45"/>')
        d.por(f'<rect x="{x - 42}" y="{y - 28}" width="80" height="50" rx="15" fill="#8f4030"/>')
        d.por(f'<rect x="{x - 42}" y="{y - 28}" width="80" height="15" rx="7.5" fill="#f2cfb0"/>')
        d.traco(f"M{x - 28} {y}H{x + 22}M{x - 20} {y + 11}H{x + 14}", "#b8624c", 3.6)
        d.por("</g>")
    for x, y, s in ((262, 138, 27), (322, 176, 26), (240, 212, 28), (250, 296, 26), (134, 208, 25)):
        d.rodela_de_linguica(x, y, s)
    for x, y, g in ((214, 178, 20), (286, 210, 140), (216, 246, 250)):
        d.folha(x, y, 40, g, "#7fae4a", "#4c7a2c")
    d.rodela_de_citrico(426, 338, 52, "#f08a1c", "#ffae3b")
    d.rodela_de_citrico(366, 366, 40, "#f08a1c", "#ffae3b")
    d.sombra(52, 356, 84, 82)
    d.circulo(48, 348, 72, d.linear("pires", "#ffffff", "#d9dfec", 0.5))
    d.circulo(48, 348, 66, "none", 'stroke="#4c86d8" stroke-width="3"')
    for x, y in d.espalhar(60, 38, 344, 40, 5):
        g = d.acaso.uniform(-1.5, 1.5)
        d.traco(f"M{n(x)} {n(y)}q{n(14*math.cos(g))} {n(-14 + 10*math.sin(g))} {n(30*math.cos(g))} {n(24*math.sin(g))}", d.acaso.choice(("#2f7d33", "#4ba047", "#1f5f27")), 4.6)
    return d


def lasanha():
    d = Desenho("lasanha")
    d.mesa("#e9f6e6", "#c4e3bd", "#d2352f")
    d.prato(240, 292, 220, 90, borda="#3b9a41")
    d.elipse(240, 318, 176, 30, "#201008", 'fill-opacity="0.3"')
    y = 300
    topo = y - 3 * 42 - 28
    d.caminho(f"M380 {topo}L404 {topo - 64}V{topo + 92}L380 {topo + 170}Z", d.linear("lado", "#9c2a17", "#6d1c0e"))
    for i in range(4):
        d.traco(f"M386 {topo + 14 + i * 42}L401 {topo - 40 + i * 37}", "#e9c46a", 8)
    for i in range(4):
        base = y - i * 42
        d.caminho(f"M98 {base - 16}C150 {base - 22} 330 {base - 22} 382 {base - 16}V{base + 14}C330 {base + 22} 150 {base + 22} 98 {base + 14}Z", "#b8321e")
        for _ in range(46):
            x = d.acaso.uniform(102, 378)
            d.elipse(x, base + d.acaso.uniform(-12, 14), d.acaso.uniform(4, 8), d.acaso.uniform(3, 5), d.acaso.choice(("#7c2f1a", "#d9482c", "#963a20", "#e2603c")))
        d.traco(f"M96 {base - 12}C150 {base - 20} 330 {base - 20} 384 {base - 12}", "#fff6dc", 11)
        onda = f"M94 {base - 24}" + "".join(f"q12 {-6 if k % 2 else 6} 24.4 0" for k in range(12))
        d.traco(onda, "#f5cf6a", 12)
        d.traco(onda, "#ffe59a", 4)
    d.caminho(f"M92 {topo}L150 {topo - 64}H404L388 {topo}C330 {topo + 12} 150 {topo + 12} 92 {topo}Z", d.linear("queijo", "#ffe48a", "#f2b23c", 0.4))
    d.caminho(f"M92 {topo}C150 {topo + 12} 330 {topo + 12} 388 {topo}C390 {topo + 22} 378 {topo + 26} 372 {topo + 14}C366 {topo + 6} 356 {topo + 10} 352 {topo + 24}"
              f"C346 {topo + 58} 326 {topo + 54} 324 {topo + 26}C320 {topo + 12} 300 {topo + 14} 296 {topo + 24}C290 {topo + 40} 272 {topo + 36} 268 {topo + 22}"
              f"C262 {topo + 14} 232 {topo + 14} 228 {topo + 26}C224 {topo + 66} 202 {topo + 64} 200 {topo + 28}C196 {topo + 12} 168 {topo + 12} 164 {topo + 24}"
              f"C158 {topo + 38} 142 {topo + 34} 140 {topo + 20}C134 {topo + 8} 122 {topo + 10} 118 {topo + 22}C112 {topo + 34} 94 {topo + 26} 92 {topo}Z", "#f9c95a")
    for _ in range(26):
        u, v = d.acaso.random(), d.acaso.random()
        x, yy = 108 + 56 * (1 - v) + u * (264 - 40 * (1 - v)), topo - 56 + v * 54
        d.elipse(x, yy, d.acaso.uniform(5, 13), d.acaso.uniform(3, 6), d.acaso.choice(("#d98a24", "#c06c14", "#fff0b8")), 'fill-opacity="0.7"')
    for x, yy, t, g in ((252, topo - 26, 52, -150), (250, topo - 26, 56, -25), (250, topo - 24, 46, 70)):
        d.folha(x, yy, t, g, "#4ea23e", "#2c6f27")
    return d


def macarronada():
    d = Desenho("macarronada")
    d.mesa("#fff1ee", "#f6c9c1", "#d2352f")
    d.prato(240, 204, 182, 182, borda="#d2352f")
    d.circulo(246, 214, 126, "#5a2c08", 'fill-opacity="0.22"')
    d.circulo(240, 204, 124, "#e6b24a")
    for i in range(130):
        a = d.acaso.uniform(0, math.tau)
        raio = d.acaso.uniform(8, 92)
        cx, cy = 240 + raio * math.cos(a), 204 + raio * math.sin(a)
        r = d.acaso.uniform(18, 42)
        b = d.acaso.uniform(0, math.tau)
        x1, y1 = cx + r * math.cos(b), cy + r * math.sin(b)
        x2, y2 = cx + r * math.cos(b + 2.6), cy + r * math.sin(b + 2.6)
        arco = f"M{n(x1)} {n(y1)}A{n(r)} {n(r)} 0 0 1 {n(x2)} {n(y2)}"
        d.traco(arco, "#b97f22", 8)
        d.traco(arco, d.acaso.choice(("#ffe08a", "#f8cf6c", "#ffd97c")), 5.6)
    molho = d.radial("molho", "#f4583a", "#b01f12")
    d.caminho("M240 118C270 110 300 126 310 150C336 166 338 200 322 220C330 252 300 280 270 278C244 300 206 290 192 270C160 266 148 234 160 210"
              "C146 178 168 148 196 144C204 126 222 118 240 118Z", molho)
    for px, py in d.espalhar(34, 240, 204, 72, 17):
        d.elipse(px, py, d.acaso.uniform(6, 11), d.acaso.uniform(5, 8), d.acaso.choice(("#d6361f", "#ff7d57", "#8f170c")), d.girado(px, py, d.acaso.uniform(0, 180)) + ' fill-opacity="0.85"')
    for px, py in d.espalhar(70, 240, 204, 96, 9):
        g = math.radians(d.acaso.uniform(0, 180))
        d.traco(f"M{n(px - 4*math.cos(g))} {n(py - 4*math.sin(g))}L{n(px + 4*math.cos(g))} {n(py + 4*math.sin(g))}", "#fff7d8", 2.8)
    for x, y, t, g in ((240, 204, 66, -30), (238, 206, 62, 200), (240, 202, 54, 90)):
        d.folha(x, y, t, g, "#4ea23e", "#2c6f27")
    for x, dentes in ((34, True), (446, False)):
        metal = d.linear("garfo" if dentes else "faca", "#ffffff", "#9aa8c6", 1, 0)
        if dentes:
            d.caminho("M18 60V120C18 136 24 142 29 146L27 330C27 342 43 342 43 330L41 146C46 142 52 136 52 120V60H46V112H39V60H31V112H24V60Z", metal, 'stroke="#7b88a8" stroke-width="1.5"')
        else:
            d.caminho("M440 56C462 78 466 130 460 168C459 174 456 176 453 176L455 330C455 342 439 342 439 330Z", metal, 'stroke="#7b88a8" stroke-width="1.5"')
    return d


def moqueca():
    d = Desenho("moqueca")
    d.mesa("#e2f4f7", "#b3dde6", "#7fc2d0")
    cx, cy, r = d.panela(174, "#6b5148", "#33231d", "#ffb347", "#dd6a12")
    for px, py in d.espalhar(60, cx, cy, r - 6, 18):
        d.circulo(px, py, d.acaso.uniform(3, 8), "#ffd27a", 'fill-opacity="0.55"')
    peixe = d.linear("peixe", "#fffdf6", "#e6cfae", 0.4)
    for x, y, g in ((180, 156, -20), (304, 166, 28), (196, 262, 16), (298, 270, -24)):
        d.por(f'<g transform="translate({x} {y}) rotate({g})">')
        d.caminho("M-52 6C-50 -30 -20 -38 10 -36C44 -34 58 -12 54 10C48 34 14 38 -14 36C-40 34 -54 26 -52 6Z", "#7c3606", 'fill-opacity="0.45" transform="translate(4 7)"')
        d.caminho("M-52 6C-50 -30 -20 -38 10 -36C44 -34 58 -12 54 10C48 34 14 38 -14 36C-40 34 -54 26 -52 6Z", peixe)
        d.traco("M-36 -8C-14 -18 16 -18 40 -8M-40 8C-14 0 18 0 44 10M-30 22C-8 16 14 16 34 24", "#d3b58c", 3)
        d.caminho("M-52 6C-50 -30 -20 -38 10 -36C20 -35.5 30 -33 38 -28C10 -32 -30 -28 -40 10C-42 20 -40 26 -34 32C-46 28 -53 20 -52 6Z", "#8f9aa8", 'fill-opacity="0.55"')
        d.por("</g>")

    def anel(x, y, rr, cor, claro, g):
        d.por(f'<g transform="translate({x} {y}) rotate({g})">')
        forma = f"M0 {n(-rr)}C{n(rr*.5)} {n(-rr*1.15)} {n(rr)} {n(-rr*.6)} {n(rr*.95)} 0C{n(rr*.9)} {n(rr*.7)} {n(rr*.4)} {n(rr)} 0 {n(rr*.9)}C{n(-rr*.5)} {n(rr)} {n(-rr)} {n(rr*.6)} {n(-rr*.95)} 0C{n(-rr)} {n(-rr*.6)} {n(-rr*.5)} {n(-rr*1.1)} 0 {n(-rr)}Z"
        d.traco(forma, cor, 11)
        d.traco(forma, claro, 4)
        d.por("</g>")

    anel(242, 130, 26, "#2f8a38", "#7ccb62", 10)
    anel(148, 216, 24, "#c8261c", "#f77f6e", 50)
    anel(334, 222, 25, "#e0a010", "#ffe07a", 120)
    anel(246, 296, 24, "#c8261c", "#f77f6e", 80)
    d.circulo(247, 212, 34, "#7c3606", 'fill-opacity="0.4"')
    d.circulo(244, 208, 34, "#d2352f")
    d.circulo(244, 208, 28.6, "#f4705c")
    for k in range(4):
        a = math.tau * k / 4 + 0.4
        x, y = 244 + 15.6 * math.cos(a), 208 + 15.6 * math.sin(a)
        d.elipse(x, y, 8.2, 5.8, "#ffc9a0", d.girado(x, y, math.degrees(a)))
    for px, py in d.espalhar(26, cx, cy, r - 20, 26):
        g = d.acaso.uniform(0, 360)
        for k in (-40, 0, 40):
            d.folha(px, py, 15, g + k, "#3f9a3a", "#2c6f27")
    d.rodela_de_citrico(430, 352, 40, "#5fae3a", "#a6d86a", "#f3fbdc")
    return d


def salada():
    d = Desenho("salada")
    d.mesa("#fff6e0", "#f7dda3", "#e9b35a")
    d.sombra(246, 220, 204, 200)
    d.circulo(240, 204, 184, d.linear("tigela", "#f6fbff", "#a9c7e6", 0.5))
    d.circulo(240, 204, 166, "#dbe9f5")
    for i in range(22):
        a = math.tau * i / 22 + 0.1
        d.folha(240 + 92 * math.cos(a), 204 + 92 * math.sin(a), 74, math.degrees(a) + d.acaso.uniform(-14, 14),
                d.acaso.choice(("#6fbf4a", "#8fd160", "#55a83c")), "#3f8a2e")
    d.circulo(240, 204, 120, "#6da04a")
    for px, py in d.espalhar(150, 240, 204, 122, 15):
        tipo = d.acaso.random()
        g = d.acaso.uniform(0, 180)
        if tipo < 0.58:
            d.elipse(px + 2, py + 3, 12, 8.5, "#27380f", 'fill-opacity="0.4" ' + d.girado(px, py, g))
            d.elipse(px, py, 12, 8.5, d.acaso.choice(("#f4e2bd", "#ead2a4", "#fbeed2")), d.girado(px, py, g))
            d.elipse(px, py + 1, 3.4, 2.6, "#2b1a12", d.girado(px, py, g))
        else:
            cor = d.acaso.choice(("#e23b30", "#d2352f", "#f2b32c", "#b04a9a", "#e8584c"))
            d.por(f'<rect x="{n(px - 8)}" y="{n(py - 8)}" width="17" height="17" rx="3" fill="#27380f" fill-opacity="0.4" {d.girado(px, py, g)}/>')
            d.por(f'<rect x="{n(px - 9)}" y="{n(py - 10)}" width="17" height="17" rx="3" fill="{cor}" {d.girado(px, py, g)}/>')
            d.por(f'<rect x="{n(px - 6)}" y="{n(py - 7)}" width="7" height="4" rx="2" fill="#ffffff" fill-opacity="0.45" {d.girado(px, py, g)}/>')
    for px, py in d.espalhar(22, 240, 204, 110, 30):
        d.folha(px, py, 20, d.acaso.uniform(0, 360), "#2f8a38", "#1e5f26")
    return d


def pao_dagua():
    d = Desenho("pao-dagua")
    d.mesa("#eaf3ff", "#c7dcf7", "#9dbfea")
    d.sombra(246, 330, 220, 46)
    d.por(f'<rect x="34" y="262" width="412" height="74" rx="22" fill="{d.linear("tabua", "#d9a066", "#9c6330")}"/>')
    d.traco("M60 290C150 282 300 300 420 288M60 312C170 306 290 320 420 310", "#7f4c20", 3, 'stroke-opacity="0.6"')
    casca = d.radial("casca", "#ffd98c", "#b8661c", 0.4, 0.25, 0.8)
    for x, y, t, g in ((160, 196, 0.98, -8), (320, 196, 0.98, 8), (238, 136, 0.86, -3), (240, 258, 1.12, 2)):
        d.por(f'<g transform="translate({x} {y}) rotate({g}) scale({t})">')
        d.caminho("M-118 14C-118 -34 -60 -60 0 -60C60 -60 118 -34 118 14C118 38 60 48 0 48C-60 48 -118 38 -118 14Z", "#4a230a", 'fill-opacity="0.3" transform="translate(4 9)"')
        d.caminho("M-118 14C-118 -34 -60 -60 0 -60C60 -60 118 -34 118 14C118 38 60 48 0 48C-60 48 -118 38 -118 14Z", casca)
        d.caminho("M-84 -14C-50 -48 50 -50 86 -18C60 -6 -50 -2 -84 -14Z", "#fff0c8")
        d.caminho("M-84 -14C-50 -48 50 -50 86 -18C56 -34 -44 -34 -84 -14Z", "#9a5214")
        for _ in range(26):
            px = d.acaso.uniform(-92, 92)
            d.circulo(px, d.acaso.uniform(6, 36) - abs(px) * 0.08, d.acaso.uniform(1.2, 2.4), "#fff3d4", 'fill-opacity="0.8"')
        d.por("</g>")
    d.por('<g transform="translate(64 330)">')
    for i in range(3):
        d.traco(f"M{i * 14} 40C{10 + i * 14} 0 {26 + i * 16} -40 {44 + i * 20} -70", "#c7962e", 4)
        for k in range(5):
            px, py = 24 + i * 16 + k * 5.5, -12 - k * 14
            d.elipse(px - 8, py, 9, 4.6, "#e8b94a", d.girado(px - 8, py, 60))
            d.elipse(px + 9, py + 2, 9, 4.6, "#f5d070", d.girado(px + 9, py + 2, -20))
    d.por("</g>")
    return d


def caipirinha():
    d = Desenho("caipirinha")
    d.mesa("#fffbe0", "#f5e79a", "#8fce5a")
    d.sombra(246, 344, 124, 30)
    d.traco("M288 40L236 320", "#ffffff", 13)
    d.traco("M288 40L236 320", "#e8584c", 13, 'stroke-dasharray="1.4 2.2" stroke-opacity="0.9"')
    d.caminho("M136 96H344L322 322C320 346 160 346 158 322Z", "#dff3ff", 'fill-opacity="0.62"')
    d.caminho("M141 140H339L322 316C320 336 160 336 158 316Z", d.linear("bebida", "#eef7c2", "#b7dc74"), 'fill-opacity="0.9"')
    d.elipse(240, 140, 99, 15, "#f6fbdc")
    for x, y, g, s in ((196, 172, 14, 58), (268, 168, -16, 60), (216, 240, -22, 56), (286, 236, 18, 52)):
        d.por(f'<rect x="{x - s / 2:.0f}" y="{y - s / 2:.0f}" width="{s}" height="{s}" rx="10" fill="#ffffff" fill-opacity="0.55" stroke="#ffffff" stroke-opacity="0.9" stroke-width="3" {d.girado(x, y, g)}/>')
        d.traco(f"M{x - s * .26:.0f} {y - s * .06:.0f}V{y - s * .26:.0f}H{x:.0f}", "#ffffff", 5, d.girado(x, y, g))
    for x, y, g in ((198, 290, 20), (240, 304, -12), (282, 292, 170), (190, 226, 100), (250, 206, 40)):
        d.por(f'<g transform="translate({x} {y}) rotate({g})">')
        d.caminho("M-34 0A34 34 0 0 1 34 0Z", "#4f9e34", 'transform="scale(1 1)"')
        d.caminho("M-29 0A29 29 0 0 1 29 0Z", "#f3fbdc")
        for a in (180, 216, 252, 288, 324):
            a1, a2 = math.radians(a + 3), math.radians(a + 33)
            d.caminho(f"M0 -2L{n(25*math.cos(a1))} {n(25*math.sin(a1))}A25 25 0 0 1 {n(25*math.cos(a2))} {n(25*math.sin(a2))}Z", "#a6d86a")
        d.por("</g>")
    d.traco("M136 96L158 322C160 346 320 346 322 322L344 96", "#8fb4d6", 5)
    d.elipse(240, 96, 104, 17, "#ffffff", 'fill-opacity="0.35" stroke="#8fb4d6" stroke-width="5"')
    d.traco("M156 130L170 290", "#ffffff", 10, 'stroke-opacity="0.8"')
    d.rodela_de_citrico(340, 92, 50, "#4f9e34", "#a6d86a", "#f3fbdc")
    d.rodela_de_citrico(92, 330, 46, "#4f9e34", "#a6d86a", "#f3fbdc")
    d.circulo(404, 318, 50, d.radial("limao", "#a8dd62", "#3f8a2a"))
    d.elipse(388, 296, 14, 8, "#f0ffd0", 'fill-opacity="0.7" ' + d.girado(388, 296, -35))
    return d


def vitamina():
    d = Desenho("vitamina")
    d.mesa("#fdeef5", "#f4c6da", "#e693b5")
    d.sombra(196, 352, 104, 24)
    d.traco("M236 20L204 180", "#d2352f", 14)
    d.traco("M232 40L210 150", "#ff9a8c", 4)
    d.caminho("M108 74H284L262 330C260 352 132 352 130 330Z", "#ffffff", 'fill-opacity="0.75"')
    d.caminho("M114 108H278L259 326C257 342 135 342 133 326Z", d.linear("creme", "#dcefa0", "#9fc653"))
    d.elipse(196, 108, 82, 14, "#eef8c8")
    for x, y, r in ((160, 104, 9), (178, 110, 6), (216, 104, 8), (236, 110, 6), (196, 113, 5)):
        d.circulo(x, y, r, "#fbffe8")
    d.traco("M108 74L130 330C132 352 260 352 262 330L284 74", "#b58fa8", 5)
    d.elipse(196, 74, 88, 14, "#ffffff", 'fill-opacity="0.4" stroke="#b58fa8" stroke-width="5"')
    d.traco("M132 116L148 306", "#ffffff", 11, 'stroke-opacity="0.75"')
    d.sombra(366, 344, 92, 26)
    d.por('<g transform="rotate(14 366 250)">')
    forma = "M366 132C396 132 408 170 424 210C448 266 420 336 366 336C312 336 284 266 308 210C324 170 336 132 366 132Z"
    d.caminho(forma, "#2f5a22")
    d.caminho(forma, d.radial("polpa", "#fdf7b0", "#a9cf52", 0.5, 0.6, 0.55), 'transform="translate(366 240) scale(0.88) translate(-366 -240)"')
    d.circulo(366, 272, 40, d.radial("caroco", "#c98a4c", "#6a3a16"))
    d.elipse(352, 256, 11, 7, "#f5d3a4", 'fill-opacity="0.7"')
    d.por("</g>")
    return d


def acai():
    d = Desenho("acai")
    d.mesa("#fff4d6", "#fbdc8e", "#f0a83a")
    d.sombra(246, 222, 200, 196)
    d.circulo(240, 204, 180, d.linear("cuia", "#c98a4c", "#6d3d18", 0.5))
    d.circulo(240, 204, 160, "#4a2710")
    d.circulo(240, 206, 154, d.radial("creme", "#7d3f8e", "#36103f"))
    for r in (128, 96, 64):
        d.traco(f"M{240 - r} 212A{r} {r} 0 0 1 {240 + r * .6:.0f} {206 - r * .8:.0f}", "#a565b4", 6, 'stroke-opacity="0.45"')
    for i, (x, y) in enumerate(((150, 150), (186, 116), (232, 98), (132, 196), (172, 178))):
        d.circulo(x + 3, y + 5, 31, "#1b0620", 'fill-opacity="0.5"')
        d.circulo(x, y, 31, "#f0d98c")
        d.circulo(x, y, 27, "#fff4c4")
        for k in range(3):
            a = math.tau * k / 3 + i
            d.elipse(x + 9 * math.cos(a), y + 9 * math.sin(a), 5, 2, "#a9792c", d.girado(x + 9 * math.cos(a), y + 9 * math.sin(a), math.degrees(a)))
    morango = d.radial("morango", "#ff7d6a", "#c01f22")
    for x, y, g in ((312, 132, 20), (346, 186, 60), (292, 190, -10), (334, 244, 110)):
        d.por(f'<g transform="translate({x} {y}) rotate({g})">')
        d.caminho("M0 38C-26 22 -34 -2 -26 -18C-18 -28 18 -28 26 -18C34 -2 26 22 0 38Z", "#1b0620", 'fill-opacity="0.5" transform="translate(3 5)"')
        d.caminho("M0 38C-26 22 -34 -2 -26 -18C-18 -28 18 -28 26 -18C34 -2 26 22 0 38Z", morango)
        for px, py in ((-14, -6), (0, -10), (14, -6), (-9, 8), (8, 8), (0, 22)):
            d.elipse(px, py, 1.8, 3, "#ffe39a")
        for a in (-150, -90, -30):
            d.folha(0, -22, 17, a, "#5fae3a", "#3f8a2e")
        d.por("</g>")
    for px, py in d.espalhar(90, 200, 278, 62, 8.5):
        g = d.acaso.uniform(0, 180)
        d.elipse(px + 1.5, py + 3, 8.5, 5.5, "#1b0620", 'fill-opacity="0.5" ' + d.girado(px, py, g))
        d.elipse(px, py, 8.5, 5.5, d.acaso.choice(("#e0b060", "#c98a3c", "#f0cf8c", "#a8672a")), d.girado(px, py, g))
    d.folha(252, 150, 52, -60, "#4ea23e", "#2c6f27")
    d.folha(252, 152, 46, 0, "#63b84e", "#2c6f27")
    return d


def caldo_verde():
    d = Desenho("caldo-verde")
    d.mesa("#fdeedd", "#f0cfa6", "#cf8a4a")
    cx, cy, r = d.panela(172, "#ffffff", "#b9c6dc", "#e6efae", "#a9c262", alcas=False)
    for px, py in d.espalhar(85, cx, cy, r - 24, 12):
        g = d.acaso.uniform(0, math.tau)
        a, b = d.acaso.uniform(12, 26), d.acaso.uniform(-14, 14)
        d.traco(f"M{n(px - a*math.cos(g))} {n(py - a*math.sin(g))}q{n(a*math.cos(g) - b*math.sin(g))} {n(a*math.sin(g) + b*math.cos(g))} {n(2*a*math.cos(g))} {n(2*a*math.sin(g))}",
                d.acaso.choice(("#2f7d33", "#4ba047", "#1f5f27", "#66b653")), 5.4)
    for px, py in d.espalhar(30, cx, cy, r - 10, 24):
        d.circulo(px, py, d.acaso.uniform(3, 6), "#f6e27a", 'fill-opacity="0.75"')
    for x, y, s in ((196, 156, 38), (286, 174, 38), (232, 246, 40), (312, 252, 34), (158, 232, 34)):
        d.rodela_de_linguica(x, y, s)
    return d


DESENHOS = (pao_de_queijo, coxinha, brigadeiro, beijinho, quindim, pudim, bolo_de_cenoura, feijoada, lasanha,
            macarronada, moqueca, salada, pao_dagua, caipirinha, vitamina, acai, caldo_verde)

if __name__ == "__main__":
    for desenho in DESENHOS:
        desenho().gravar()
