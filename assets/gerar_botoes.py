#!/usr/bin/env python3
"""Writes the toolbar pictures, botoes/<button>Norm.svg and botoes/<button>Over.svg.

Every button is drawn once, on a grid of 48 x 48 units with strokes of 2, and coloured twice: calm colours for
the normal look; warmer and brighter ones with a golden rim and a glow for the look under the mouse.
A light rim around each drawing keeps it apart from the toolbar, which goes from white down to a strong blue.

Only what Qt Svg (SVG Tiny 1.2) draws is used: no filters, clips, masks or style sheets.

    gerar_botoes.py              writes the files
    gerar_botoes.py --conferir   writes nothing; fails when a file is not what would be written
"""

import re
import sys
from pathlib import Path
from string import Template

PASTA = Path(__file__).resolve().parent / "botoes"

# Gradients run from top left to bottom right: light comes from the top left in every drawing.
NORMAL = {
    "traco": "#1b2450",
    "linha": "#5d6896",
    "rim": "#ffffff",
    "papel": ("#fffefa", "#f3e7cf"),
    "sombra": ("#e3d3b4", "#c9b48e"),
    "metal": ("#fbfcff", "#b4c0da"),
    "aco": ("#93a1c4", "#66759f"),
    "vidro": ("#f2faff", "#a9d3f5"),
    "laranja": ("#ffb964", "#ee7f1d"),
    "vermelho": ("#f77f6e", "#d2352f"),
    "verde": ("#8ed673", "#3b9a41"),
    "azul": ("#8cc8fa", "#3f86dc"),
    "madeira": ("#dfa869", "#a9662c"),
    "papelao": ("#f0cf9c", "#cf9a58"),
    "luz": ("#fff3c4", "#ffd978"),
}
LUMINOSO = {
    "traco": "#5c2208",
    "linha": "#b06a2a",
    "rim": "#ffe04a",
    "papel": ("#ffffff", "#fff1b5"),
    "sombra": ("#ffdf94", "#f2bb55"),
    "metal": ("#ffffff", "#ffe3a1"),
    "aco": ("#f2b25a", "#cf7f2c"),
    "vidro": ("#ffffff", "#ffeaa0"),
    "laranja": ("#ffd257", "#ff8a00"),
    "vermelho": ("#ff8f6b", "#f0301c"),
    "verde": ("#c4f06a", "#55b52c"),
    "azul": ("#b5e6ff", "#4fa8f5"),
    "madeira": ("#f7bd6c", "#cf7a25"),
    "papelao": ("#ffe3a6", "#f5b04c"),
    "luz": ("#ffffff", "#fff08a"),
}

# Each drawing: its outer shapes, the details on them, and at most one badge that lies in front of both.
# Outer shapes and the badge also make the rim; each is an SVG element without colours, paired with its fill.
# The badge has a rim of its own, so that it stands off from the drawing behind it.
FOLHA = "M11.5 4.5H27.5L37 14V39.5A3.5 3.5 0 0 1 33.5 43H11.5A3.5 3.5 0 0 1 8 39.5V8A3.5 3.5 0 0 1 11.5 4.5Z"
DISQUETE = "M8 4.5H31L37.5 11V34.5A3 3 0 0 1 34.5 37.5H8A3 3 0 0 1 5 34.5V7.5A3 3 0 0 1 8 4.5Z"

DISQUETE_DETALHES = """
  <path d="M12.5 4.5V13A1.5 1.5 0 0 0 14 14.5H26.5A1.5 1.5 0 0 0 28 13V4.5Z" fill="url(#metal)"/>
  <path d="M23.5 7.5V11.5" stroke-width="2.6"/>
  <path d="M10.5 37.5V23A2 2 0 0 1 12.5 21H30A2 2 0 0 1 32 23V37.5Z" fill="url(#papel)"/>
  <path d="M15 26.5H25M15 31.5H21" stroke="$linha"/>
"""

DESENHOS = {
    # A ring-bound notebook, one coloured dot to a recipe.
    "imgLstRcta": (
        [('<rect x="8.5" y="5" width="33" height="38" rx="4"/>', "papel")],
        """
  <path d="M12.5 5H17V43H12.5A4 4 0 0 1 8.5 39V9A4 4 0 0 1 12.5 5Z" fill="url(#laranja)"/>
  <path d="M5.5 13H11.5M5.5 24H11.5M5.5 35H11.5" stroke-width="4.6"/>
  <path d="M5.5 13H11.5M5.5 24H11.5M5.5 35H11.5" stroke="$rim" stroke-width="1.6"/>
  <circle cx="23.5" cy="13.5" r="3.1" fill="url(#vermelho)" stroke="none"/>
  <circle cx="23.5" cy="24" r="3.1" fill="url(#verde)" stroke="none"/>
  <circle cx="23.5" cy="34.5" r="3.1" fill="url(#laranja)" stroke="none"/>
  <path d="M29.5 13.5H36M29.5 24H36M29.5 34.5H36" stroke="$linha" stroke-width="2.6"/>
""",
    ),
    # A fresh sheet with a cup cake, and a plus.
    "imgDetRcta": (
        [
            (f'<path d="{FOLHA}"/>', "papel"),
        ],
        """
  <path d="M27.5 4.5V11A3 3 0 0 0 30.5 14H37Z" fill="url(#sombra)"/>
  <path d="M13.5 21.5H25.5L24 29.5H15Z" fill="url(#laranja)" stroke-width="1.8"/>
  <path d="M13.2 22A3.4 3.4 0 0 1 13.7 15.4A5.9 5.9 0 0 1 25.3 15.4A3.4 3.4 0 0 1 25.8 22Z" fill="url(#vermelho)" stroke-width="1.8"/>
  <path d="M16.8 16.4A2.8 2.8 0 0 1 19 14" stroke="#ffffff" stroke-width="1.6"/>
  <path d="M13 34.5H20.5M13 38.8H20.5" stroke="$linha"/>
""",
        (
            '<circle cx="34.5" cy="34.5" r="9"/>',
            "verde",
            '<path d="M34.5 29.7V39.3M29.7 34.5H39.3" stroke="#ffffff" stroke-width="3.4"/>',
        ),
    ),
    # A magnifying glass that found a tomato.
    "imgPesRcta": (
        [
            ('<path d="M29.6 33.2L33.2 29.6L42.3 38.7A2.55 2.55 0 0 1 38.7 42.3Z"/>', "madeira"),
            ('<circle cx="20" cy="20" r="15.5"/>', "metal"),
        ],
        """
  <circle cx="20" cy="20" r="11.7" fill="url(#vidro)"/>
  <path d="M20 16.8C15.5 14.3 12.4 17.5 12.7 21.3C13 25.2 16.4 27.8 20 27.8C23.6 27.8 27 25.2 27.3 21.3C27.6 17.5 24.5 14.3 20 16.8Z" fill="url(#vermelho)" stroke-width="1.6"/>
  <path d="M20 17.3L16.7 18.3L17.5 15.7L15.5 13.8L18.6 14.2L20 11.5L21.4 14.2L24.5 13.8L22.5 15.7L23.3 18.3Z" fill="url(#verde)" stroke-width="1.3"/>
  <path d="M15.4 20.6A4.6 4.6 0 0 0 16.3 23.9" stroke="#ffffff" stroke-width="1.6"/>
""",
    ),
    # A printer with a printed recipe.
    "imgImpressao": (
        [
            ('<path d="M13.5 6.5A2 2 0 0 1 15.5 4.5H32.5A2 2 0 0 1 34.5 6.5V20H13.5Z"/>', "papel"),
            ('<rect x="4.5" y="15.5" width="39" height="20" rx="4.5"/>', "metal"),
            ('<path d="M12.5 26.5H35.5V41.5A2 2 0 0 1 33.5 43.5H14.5A2 2 0 0 1 12.5 41.5Z"/>', "papel"),
        ],
        """
  <path d="M4.5 24.5V20A4.5 4.5 0 0 1 9 15.5H39A4.5 4.5 0 0 1 43.5 20V24.5Z" fill="url(#aco)"/>
  <path d="M10.5 26.5H37.5" stroke-width="3.6"/>
  <path d="M12.5 26.5H35.5V41.5A2 2 0 0 1 33.5 43.5H14.5A2 2 0 0 1 12.5 41.5Z" fill="url(#papel)"/>
  <circle cx="19" cy="35" r="3.4" fill="url(#laranja)" stroke="none"/>
  <path d="M25.5 33H31M25.5 38H31" stroke="$linha"/>
  <circle cx="37.3" cy="20" r="2.1" fill="url(#verde)" stroke="none"/>
  <path d="M10.5 20H17" stroke="#ffffff"/>
""",
    ),
    # An open envelope with an @ letter.
    "imgEmail": (
        [
            ('<path d="M4.5 20.5L12 14.5H36L43.5 20.5V39.5A3.5 3.5 0 0 1 40 43H8A3.5 3.5 0 0 1 4.5 39.5Z"/>', "sombra"),
            ('<path d="M10.5 7.5A2.5 2.5 0 0 1 13 5H35A2.5 2.5 0 0 1 37.5 7.5V34H10.5Z"/>', "papel"),
        ],
        """
  <circle cx="24" cy="16" r="2.7" stroke="url(#vermelho)" stroke-width="2.4"/>
  <path d="M26.7 13.3V17.3C26.7 19.8 30.6 19.8 30.6 16A6.6 6.6 0 1 0 27.3 21.7" stroke="url(#vermelho)" stroke-width="2.4"/>
  <path d="M4.5 20.5L21.9 32.4A3.7 3.7 0 0 0 26.1 32.4L43.5 20.5V39.5A3.5 3.5 0 0 1 40 43H8A3.5 3.5 0 0 1 4.5 39.5Z" fill="url(#papelao)"/>
  <path d="M6 42L17 30.5M42 42L31 30.5"/>
""",
    ),
    # A carton full of recipe cards, on its way.
    "imgTransmit": (
        [
            ('<path d="M19.5 9.2L28 6.8A2 2 0 0 1 30.4 8.2L33.5 20H22Z"/>', "vidro"),
            ('<path d="M8 7.5A2 2 0 0 1 10 5.5H21.5A2 2 0 0 1 23.5 7.5V20H8Z"/>', "papel"),
            ('<path d="M4.5 18.5H36V39.5A3.5 3.5 0 0 1 32.5 43H8A3.5 3.5 0 0 1 4.5 39.5Z"/>', "papelao"),
        ],
        """
  <circle cx="12.8" cy="11.5" r="2.4" fill="url(#vermelho)" stroke="none"/>
  <path d="M17.5 10H19.5M17.5 13.5H19.5" stroke="$linha"/>
  <path d="M11.5 18.5H19V28L15.25 25.5L11.5 28Z" fill="url(#laranja)"/>
""",
        ('<path d="M22.5 28.2H31V21.7L44.5 32.7L31 43.7V37.2H22.5Z"/>', "verde", ""),
    ),
    # The world, and a fresh page of news.
    "imgInternet": (
        [
            ('<circle cx="21.5" cy="21.5" r="17"/>', "azul"),
        ],
        """
  <path d="M9 12.5C11.5 8.5 15 6.5 18.5 6C20.5 7.5 18 9.5 20 11.5C21.5 13.5 18.5 15 16.5 15.5C14.5 16 15.5 19 13 19.5C10.5 20 9.5 17 7 18.5C6 16.5 7.5 14.5 9 12.5Z" fill="url(#verde)" stroke="none"/>
  <path d="M25 8C28 7 31 8.5 33.5 11C36 14 37 17 37 20C34.5 19.5 34 16.5 31.5 17C29 17.5 27.5 16 28 13.5C28.3 11.5 24 10.5 25 8Z" fill="url(#verde)" stroke="none"/>
  <path d="M13.5 24C17 22.5 21.5 24 23 27C24 29.5 20.5 31 20 34C19.7 36 17.5 36.5 16.5 34.5C15.5 31.5 11.5 27 13.5 24Z" fill="url(#verde)" stroke="none"/>
  <path d="M21.5 4.5C13 12 13 31 21.5 38.5C30 31 30 12 21.5 4.5ZM5 21.5H38" stroke="#ffffff" stroke-width="1.5" stroke-opacity="0.75"/>
  <circle cx="21.5" cy="21.5" r="17"/>
""",
        (
            '<path d="M26.5 27A2.5 2.5 0 0 1 29 24.5H41A2.5 2.5 0 0 1 43.5 27V41A2.5 2.5 0 0 1 41 43.5H29A2.5 2.5 0 0 1 26.5 41Z"/>',
            "papel",
            """<path d="M30.5 29.5H39.5" stroke="url(#vermelho)" stroke-width="3"/>
  <path d="M30.5 34.5H39.5M30.5 38.8H36" stroke="$linha"/>""",
        ),
    ),
    # Into the disk.
    "imgBackup": (
        [
            (f'<path d="{DISQUETE}"/>', "azul"),
        ],
        DISQUETE_DETALHES,
        ('<path d="M30 21.5H39V30.5H44.5L34.5 44L24.5 30.5H30Z"/>', "verde", ""),
    ),
    # Back out of the disk.
    "imgRestore": (
        [
            (f'<path d="{DISQUETE}"/>', "azul"),
        ],
        DISQUETE_DETALHES,
        ('<path d="M20 30L31.5 19.5V25.5C40 25.5 44.5 31 44.5 38V43.5C42.5 38.5 38 34.5 31.5 34.5V40.5Z"/>', "laranja", ""),
    ),
    # A window that goes down to the bar.
    "imgMinimize": (
        [
            ('<rect x="5" y="5" width="38" height="27" rx="4"/>', "papel"),
            ('<rect x="9" y="37" width="30" height="6.5" rx="3"/>', "laranja"),
        ],
        """
  <path d="M5 13V9A4 4 0 0 1 9 5H39A4 4 0 0 1 43 9V13Z" fill="url(#azul)"/>
  <path d="M36 9H38.5M29.5 9H32" stroke="#ffffff" stroke-width="2.4"/>
  <path d="M20 17H28V24H33.5L24 34L14.5 24H20Z" fill="url(#verde)"/>
""",
    ),
    # The way out.
    "imgSaida": (
        [
            ('<path d="M9 43V8A3.5 3.5 0 0 1 12.5 4.5H30A3.5 3.5 0 0 1 33.5 8V43Z"/>', "luz"),
        ],
        """
  <path d="M9 43V8A3.5 3.5 0 0 1 10.5 5.2L20.3 9A2.5 2.5 0 0 1 22 11.4V43.5Z" fill="url(#madeira)"/>
  <circle cx="18" cy="27" r="1.7" fill="$traco" stroke="none"/>
  <path d="M5 43.5H37.5"/>
""",
        ('<path d="M24.5 19.5H32.5V13L45 24L32.5 35V28.5H24.5Z"/>', "vermelho", ""),
    ),
}


def gradientes(corpo, cores):
    """The definitions of the gradients that `corpo` uses, and no others."""
    linhas = []
    for nome in sorted(set(re.findall(r"url\(#(\w+)\)", corpo))):
        if nome == "brilho":
            linhas.append(
                '  <radialGradient id="brilho" gradientUnits="userSpaceOnUse" cx="24" cy="24" r="24">'
                '<stop offset="0" stop-color="#fff7b0" stop-opacity="1"/>'
                '<stop offset="0.6" stop-color="#ffe35c" stop-opacity="0.85"/>'
                '<stop offset="1" stop-color="#ffd21f" stop-opacity="0"/></radialGradient>'
            )
            continue
        claro, escuro = cores[nome]
        linhas.append(
            f'  <linearGradient id="{nome}" x1="0" y1="0" x2="0.6" y2="1">'
            f'<stop offset="0" stop-color="{claro}"/><stop offset="1" stop-color="{escuro}"/></linearGradient>'
        )
    return "\n".join(linhas)


def desenhar(externas, detalhes, cores, luminoso, distintivo=None):
    """One complete SVG text."""

    def contorno(formas):
        return (
            ' <g fill="$rim" stroke="$rim" stroke-width="5" stroke-linejoin="round" stroke-linecap="round">\n'
            + "\n".join("  " + forma for forma in formas)
            + "\n </g>"
        )

    def pintura(formas, por_cima):
        return (
            ' <g fill="none" stroke="$traco" stroke-width="2" stroke-linejoin="round" stroke-linecap="round">\n'
            + "\n".join("  " + forma.replace("/>", f' fill="url(#{cor})"/>') for forma, cor in formas)
            + ("\n  " + por_cima.strip() if por_cima.strip() else "")
            + "\n </g>"
        )

    partes = []
    if luminoso:
        partes.append(' <circle cx="24" cy="24" r="24" fill="url(#brilho)"/>')
    partes.append(contorno([forma for forma, _ in externas]))
    if distintivo:
        forma, cor, desenho = distintivo
        partes += [pintura(externas, detalhes), contorno([forma]), pintura([(forma, cor)], desenho)]
    else:
        partes.append(pintura(externas, detalhes))
    corpo = Template("\n".join(partes)).substitute({n: c for n, c in cores.items() if isinstance(c, str)})
    return (
        '<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" '
        'width="48" height="48" viewBox="0 0 48 48">\n'
        f" <defs>\n{gradientes(corpo, cores)}\n </defs>\n{corpo}\n</svg>\n"
    )


def main():
    conferir = sys.argv[1:] == ["--conferir"]
    diferentes = []
    for nome, (externas, detalhes, *distintivo) in DESENHOS.items():
        for sufixo, cores in (("Norm", NORMAL), ("Over", LUMINOSO)):
            arquivo = PASTA / f"{nome}{sufixo}.svg"
            texto = desenhar(externas, detalhes, cores, sufixo == "Over", *distintivo)
            if not conferir:
                arquivo.write_text(texto, encoding="utf-8")
            elif not arquivo.exists() or arquivo.read_text(encoding="utf-8") != texto:
                diferentes.append(arquivo.name)
    if diferentes:
        sys.exit("not what gerar_botoes.py writes: " + ", ".join(diferentes))


if __name__ == "__main__":
    main()
