#!/usr/bin/env python3
"""Writes the golden files of this folder from the rules of the formats, without a line of the program.

    gerar.py              writes them
    gerar.py --conferir   compares them with what is committed; exit code 1 when one differs

The container's bytes depend on the zlib that is installed: they hold for zlib 1.2.13.
"""

import base64
import pathlib
import struct
import sys
import zlib

PASTA = pathlib.Path(__file__).parent
SITE = "https://www.tamarel.example"
CABECALHO = "Exportação do Cozinhario 2005 por Tamarel"


def figura():
    """A picture of 16 x 8 points, PNG, whose bytes do not shrink much."""
    def parte(tipo, dados):
        corpo = tipo + dados
        return struct.pack(">I", len(dados)) + corpo + struct.pack(">I", zlib.crc32(corpo))
    linhas = b"".join(b"\0" + bytes((x * 37 + y * 91 + c * 53) % 256 for x in range(16) for c in range(3))
                      for y in range(8))
    return (b"\x89PNG\r\n\x1a\n" + parte(b"IHDR", struct.pack(">IIBBBBB", 16, 8, 8, 2, 0, 0, 0))
            + parte(b"IDAT", zlib.compress(linhas, 9)) + parte(b"IEND", b""))


# In the order of their names. None is an empty value.
RECEITAS = [
    {"Nome": "Arroz doce", "Modo": "Cozinhe o arroz no leite.", "Porcoes": "0", "Calorias": "0"},
    {"Nome": "Bolo de fubá, simples", "Classificacao": "Bolos, tortas",
     "Modo": "Bata os ovos, o açúcar e o óleo.\r\nAsse por 40 minutos.", "Porcoes": "8",
     "Preparo": "1 hora, mais ou menos", "Tipo_Calorias": "R", "Calorias": "2150,5",
     "Observacao": "Sirva morno,\r\ncom café.", "Figura": "F0000002.img", "dados": figura(),
     "linhas": [("Fubá, fino", "1,5", "xícara(s), de chá"), ("Óleo", "1/2", "xícara"), ("Sal", None, None)]},
    {"Nome": "Pão d'água", "Classificacao": "Pães", "Modo": "Sove bem.", "Porcoes": "2,5", "Preparo": "3 h",
     "Tipo_Calorias": "P", "Calorias": "120", "Tipo": "1", "Origem": "Receitas da Vovó, vol. 2",
     "linhas": [("Farinha d'aveia", "500", "g")]},
]


def texto_do_pacote(receitas):
    def sem_virgula(v):
        return v.replace(",", "\\VG/")

    def sem_quebra(v):
        return sem_virgula(v.replace("\r\n", "</BR\\>"))

    def igual(v):
        return v

    campos = [("Nome", sem_virgula), ("Classificacao", sem_virgula), ("Modo", sem_quebra), ("Porcoes", igual),
              ("Preparo", sem_virgula), ("Tipo_Calorias", igual), ("Calorias", igual), ("Tipo", igual),
              ("Origem", sem_virgula), ("Observacao", sem_quebra)]
    linhas = [CABECALHO]

    def valor(tag, v):
        linhas.append(f"<{tag}>{v}</{tag}>")

    for r in receitas:
        linhas.append("<RECEITA>")
        for campo, escape in campos:
            valor(campo.upper(), escape(r.get(campo) or ""))
        if r.get("dados"):
            valor("FIGURA", r["Figura"])
            valor("DADOS_FIGURA", em_linhas(r["dados"]))
        linhas.append("<INGREDIENTES>")
        for ingrediente, quantidade, unidade in r.get("linhas", []):
            linhas.append("<ITEM>")
            valor("INGREDIENTE", sem_virgula(ingrediente))
            valor("QUANTIDADE", sem_virgula(quantidade or ""))
            valor("UNIDADE", sem_virgula(unidade or ""))
        linhas.append("</INGREDIENTES>")
    return "".join(linha + "\r\n" for linha in linhas).encode("cp1252")


def em_linhas(dados):
    corrido = base64.b64encode(dados).decode()
    return "\r\n".join(corrido[i:i + 76] for i in range(0, len(corrido), 76))


def recipiente(dados):
    return zlib.compress(dados, 9) + b"\0" * 5 + str(len(dados)).encode().ljust(11, b"\0") + b"\0"


MENSAGEM = """\
Reply-To:
From:
Subject: Pacote de Receitas
Date:{b}
MIME-Version: 1.0
Content-Type: multipart/mixed;
        boundary="----=_NextPart_000_0009_01C4903F.EF2FE790"
X-Priority: 3
X-MSMail-Priority: Normal
X-Unsent: 1
X-MimeOLE: Produced By Microsoft MimeOLE V5.50.4927.1200

This is a multi-part message in MIME format.

------=_NextPart_000_0009_01C4903F.EF2FE790
Content-Type: multipart/alternative;
        boundary="----=_NextPart_001_000A_01C4903F.EF2FE790"

------=_NextPart_001_000A_01C4903F.EF2FE790
Content-Type: text/html;
        charset="iso-8859-1"
Content-Transfer-Encoding: quoted-printable

<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.0 Transitional//EN">
<HTML><HEAD>
<META content=3D"text/html; charset=3Diso-8859-1" ={b}
http-equiv=3DContent-Type>
<META content=3D"MSHTML 5.00.3819.300" name=3DGENERATOR>
<STYLE></STYLE>
</HEAD>
<BODY bgColor=3D#ffffff><FONT color=3Dblue face=3DVerdana =
size=3D2>Para efetuar a importação automática de pacote do Cozinhario 2005, abra o arquivo anexo.<BR>\
<HR color=3D#000000 width=3D"100%"><Font Color=3dblack><B>Receita(s) neste Pacote : </B><BR>{nomes}\
</TBODY></TABLE>
<HR color=3D#000000 width=3D"100%"><FONT color=3Dblue face=3DVerdana size=3D1><B>ATENÇÃO: Caso você não \
consiga abrir o arquivo em anexo é porque você ainda não possui o programa Cozinhario instalado.Para \
instalá-lo gratuitamente, <a href=3D"{site}/cozinhario/download/instalar.exe">clique aqui</a>!<BR>Pacote \
enviado atrav=E9s do =
Cozinhario 2005 - Por Tamarel Inform=E1tica - <A=20
href=3D"{site}">{maquina}</A> =
</FONT></B></BODY></HTML>

------=_NextPart_001_000A_01C4903F.EF2FE790--

------=_NextPart_000_0009_01C4903F.EF2FE790
Content-Type: application/octet-stream;
        name="=?iso-8859-1?Q?PacoteReceita.lr$?="
Content-Transfer-Encoding: base64
Content-Disposition: attachment;
        filename="=?iso-8859-1?Q?PacoteReceita.lr$?="

{anexo}
------=_NextPart_000_0009_01C4903F.EF2FE790--

"""


def mensagem(receitas, pacote):
    nomes = "".join("<LI>" + r["Nome"] for r in receitas)
    texto = MENSAGEM.replace("\n", "\r\n").format(b=" ", nomes=nomes, site=SITE,
                                                  maquina=SITE.removeprefix("https://"), anexo=em_linhas(pacote))
    return texto.encode("cp1252")


def main():
    texto = texto_do_pacote(RECEITAS)
    pacote = recipiente(texto)
    arquivos = {"figura.png": figura(), "PacoteReceitas.lrs": texto, "PacoteReceita.lr$": pacote,
                "temppct.eml": mensagem(RECEITAS, pacote)}
    diferentes = 0
    for nome, dados in arquivos.items():
        caminho = PASTA / nome
        if "--conferir" not in sys.argv:
            caminho.write_bytes(dados)
        elif not caminho.exists() or caminho.read_bytes() != dados:
            print("differs:", nome)
            diferentes += 1
    return 1 if diferentes else 0


if __name__ == "__main__":
    sys.exit(main())
