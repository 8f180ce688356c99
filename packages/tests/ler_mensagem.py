#!/usr/bin/env python3
"""Reads a package message with Python's own MIME reader and compares its attachment with the package file.

    ler_mensagem.py message.eml package.lr$ [name ...]    each name must stand in the HTML part

Exit code 0 when everything holds; otherwise says what does not.
"""

import email
import email.header
import pathlib
import sys


def conferir(certo, texto):
    if not certo:
        sys.exit("ler_mensagem.py: " + texto)


def main():
    caminho, pacote, *nomes = sys.argv[1:]
    bruto = pathlib.Path(caminho).read_bytes()
    conferir(b"\r\n" in bruto and b"\n" not in bruto.replace(b"\r\n", b""), "lines do not all end in CR LF")
    mensagem = email.message_from_bytes(bruto)
    conferir(mensagem.get_content_type() == "multipart/mixed", "not multipart/mixed")
    conferir(mensagem["Subject"] == "Pacote de Receitas", "wrong subject")
    conferir(mensagem["X-Unsent"] == "1", "not an unsent message")
    conferir(mensagem.get_boundary() == "----=_NextPart_000_0009_01C4903F.EF2FE790", "wrong boundary")

    partes = mensagem.get_payload()
    conferir(len(partes) == 2, f"{len(partes)} parts instead of 2")
    corpo, anexo = partes
    conferir(corpo.get_content_type() == "multipart/alternative", "the first part is no multipart/alternative")
    conferir(len(corpo.get_payload()) == 1, "the first part holds more than the HTML text")
    html = corpo.get_payload()[0]
    conferir(html.get_content_type() == "text/html", "the text is not HTML")
    conferir(html.get_content_charset() == "iso-8859-1", "wrong charset")
    texto = html.get_payload(decode=True).decode("cp1252")
    for nome in nomes:
        conferir("<LI>" + nome in texto, f"{nome!r} is not listed")
    conferir("Informática" in texto and "importação" in texto, "accents are lost")

    nome = str(email.header.make_header(email.header.decode_header(anexo.get_filename())))
    conferir(nome == "PacoteReceita.lr$", f"the attachment is called {nome!r}")
    conferir(anexo.get_content_type() == "application/octet-stream", "wrong type of attachment")
    conferir(anexo.get_content_disposition() == "attachment", "the package is not attached")
    dados = anexo.get_payload(decode=True)
    conferir(dados == pathlib.Path(pacote).read_bytes(), "the attachment differs from the package file")
    defeitos = [d for parte in mensagem.walk() for d in parte.defects]
    conferir(not defeitos, f"defects: {defeitos}")


if __name__ == "__main__":
    main()
