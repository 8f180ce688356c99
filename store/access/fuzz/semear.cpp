// semear FOLDER: writes small books, one of each kind that the reader tells apart, for fuzzing to begin with.

#include "store/access/tests/LivroFeito.h"

#include <QDir>

#include <iostream>

namespace
{
using Estado = EscritorJet::Estado;

/// Rows of every state, texts of every form, numbers in both areas.
QByteArray Cheio(int jet, bool porReferencia, quint32 chave)
{
    LivroFeito livro(jet);
    livro.receitas.colunas[10].fixa = false;
    livro.receitas.mapaPorReferencia = porReferencia;
    livro.escritor.chave = chave;
    const auto texto = [&](const QString &t) { return livro.escritor.texto(t); };
    livro.Receita(1, "Pão",
                  {{"Data", EscritorJet::duplo(-1.25)}, {"Observacao", livro.escritor.memoEmLinha("")}});
    livro.Receita(
        2, "Bolo",
        {{"Modo", livro.escritor.memoEmUmRegistro(texto("Asse"))}, {"Calorias", EscritorJet::duplo(215.5)}});
    livro.Receita(3, "Café", {{"Modo", livro.escritor.memoEmCadeia(texto("Coe a água"), 6)}}).estado =
        Estado::Movida;
    livro.Receita(4, "Chá").estado = Estado::MovidaDeNovo;
    livro.Receita(5, "Suco").estado = Estado::Apagada;
    livro.Receita(6, "Sopa").estado = Estado::ApagadaVazia;
    livro.Receita(7, "Salada").estado = Estado::Sobra;
    livro.Receita(
        8, QString("Torta de palmito ").repeated(12),
        {{"Preparo", jet == 4 ? EscritorJet::comprimido(QByteArray("1\0\xAC\x20", 4)) : texto("1 h")}});
    livro.Ingrediente(1, 1, "água", {{"Quantidade", ""}});
    livro.Ingrediente(2, 1, "farinha").colunas = 3;
    return livro.Bytes();
}

bool Gravar(const QDir &pasta, const QString &nome, const QByteArray &bytes)
{
    QFile arquivo(pasta.filePath(nome));
    return arquivo.open(QIODevice::WriteOnly) && arquivo.write(bytes) == bytes.size();
}
} // namespace

int main(int argc, char **argv)
{
    const QDir pasta(argc > 1 ? QFile::decodeName(argv[1]) : QString());
    if (argc < 2 || !pasta.exists()) {
        std::cerr << "uso: semear PASTA\n";
        return 2;
    }
    const bool gravado = Gravar(pasta, "jet3.lst", Cheio(3, false, 0)) &&
                         Gravar(pasta, "jet3_mapa_por_referencia.lst", Cheio(3, true, 0)) &&
                         Gravar(pasta, "jet4.lst", Cheio(4, false, 0)) &&
                         Gravar(pasta, "jet4_mapa_por_referencia.lst", Cheio(4, true, 0)) &&
                         Gravar(pasta, "jet3_codificado.lst", Cheio(3, false, 0x12345678)) &&
                         Gravar(pasta, "so_cabecalho.lst", Cheio(3, false, 0).left(2048));
    return gravado ? 0 : 1;
}
