"""Reads the stored messages with Python's own MIME reader, as a mail program would.

For every message: the HTML part is found where a reader looks for it, and the picture's bytes are the same.
Usage: ler_mensagens.py FOLDER
"""

import email
import pathlib
import sys

FIGURA = bytes(i * 7 % 256 for i in range(300))
CID = "000e01c49023$8e488930$0100000a@tamarel"

ESPERADO = {
    # message: (words of the title, picture's bytes or None)
    "com_figura_por_porcao": ("Pão d'água <da> casa = fácil & rápida", FIGURA),
    "sem_figura_por_receita": ("Pão d'água <da> casa = fácil & rápida", None),
    "sem_figura_sem_base_das_calorias": ("Pão d'água <da> casa = fácil & rápida", None),
    "sem_fatos": ("Água", None),
    "figura_que_falta": ("Pão d'água <da> casa = fácil & rápida", b""),
    "figura_de_uma_linha": ("Pão d'água <da> casa = fácil & rápida", FIGURA[:57]),
}


def conferir(condicao, texto):
    if not condicao:
        raise AssertionError(texto)


def ler(caminho, titulo, figura):
    mensagem = email.message_from_bytes(caminho.read_bytes())
    conferir(mensagem.get_content_type() == "multipart/related", "outer type")
    conferir(mensagem.get_param("type") == "multipart/alternative", "type of the root part")
    conferir(mensagem["X-Unsent"] == "1", "opens as unsent")
    partes = mensagem.get_payload()
    conferir(len(partes) == (1 if figura is None else 2), f"{len(partes)} parts")

    conferir(partes[0].get_content_type() == "multipart/alternative", "inner type")
    (html,) = partes[0].get_payload()
    conferir(html.get_content_type() == "text/html", "type of the body")
    conferir(html.get_content_charset() == "iso-8859-1", "charset of the body")
    texto = html.get_payload(decode=True).decode("cp1252")
    conferir(f"<B>{titulo}<FONT size=2>" in texto, "title")
    conferir("</HTML>" in texto, "end of the page")
    conferir(("cid:" + CID in texto) == (figura is not None), "reference to the picture")

    if figura is not None:
        conferir(partes[1].get_content_type() == "image/jpeg", "type of the picture")
        conferir(partes[1].get_filename() == "figura.jpg", "name of the picture")
        conferir(partes[1]["Content-ID"] == f"<{CID}>", "id of the picture")
        conferir(partes[1].get_payload(decode=True) == figura, "bytes of the picture")
    for parte in mensagem.walk():
        conferir(not parte.defects, f"{parte.defects}")


def main():
    pasta = pathlib.Path(sys.argv[1])
    arquivos = {caminho.stem: caminho for caminho in pasta.glob("*.eml")}
    conferir(arquivos.keys() == ESPERADO.keys(), f"messages: {sorted(arquivos)}")
    for nome, (titulo, figura) in ESPERADO.items():
        try:
            ler(arquivos[nome], titulo, figura)
        except AssertionError as erro:
            sys.exit(f"{nome}: {erro}")
    print(f"{len(ESPERADO)} messages read")


if __name__ == "__main__":
    main()
