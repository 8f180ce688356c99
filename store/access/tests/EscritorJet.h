#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

/**
 * Writes Access files for the tests, Jet 3 or Jet 4, byte by byte. It shares nothing with the reader: offsets
 * and sizes are written down here a second time, so that a slip on one side shows.
 *
 * The files hold a header, a catalogue of four columns and tables without indexes: enough for the reader.
 * Values are handed in as bytes; the functions below make them.
 */
class EscritorJet
{
public:
    enum Tipo {
        SimNao = 1,
        Byte,
        Inteiro,
        Longo,
        Moeda,
        Simples,
        Duplo,
        DataHora,
        Texto = 10,
        Memo = 12,
        Decimal = 16
    };

    struct Coluna {
        QByteArray nome = {};
        int tipo = Texto;
        bool fixa = false;
        int tamanho = 0;
        int escala = 0;
        int numero = -1;   ///< -1: the column's position
        int variavel = -1; ///< -1: variable columns counted
        int lugar = -1;    ///< -1: behind the fixed columns before it
    };

    /// What became of a row.
    enum class Estado {
        Viva,
        Apagada,      ///< its bytes still lie there
        ApagadaVazia, ///< nothing lies there
        Movida,       ///< to another page
        MovidaDeNovo, ///< twice; the copy in between still lies there
        Sobra         ///< a copy that nothing points to
    };

    struct Linha {
        QMap<QByteArray, QByteArray> valores = {}; ///< columns that are missing here are NULL
        Estado estado = Estado::Viva;
        int colunas = -1; ///< columns when the row was written; -1: all
    };

    struct Tabela {
        QByteArray nome = {};
        QList<Coluna> colunas = {};
        QList<Linha> linhas = {};
        qint32 contador = 0;
        int linhasDitas = -1; ///< -1: as many as there are
        quint16 tipoNoCatalogo = 1;
        quint32 marcasNoCatalogo = 0;
        bool mapaPorReferencia = false;

        /// Adds a row that is alive; returns it.
        Linha &Acrescentar(const QMap<QByteArray, QByteArray> &valores);
    };

    explicit EscritorJet(int jet);

    QByteArray texto(const QString &texto) const; ///< code page 1252, or UTF-16
    static QByteArray comprimido(const QByteArray &bytes) { return "\xFF\xFE" + bytes; }
    static QByteArray inteiro(qint16 valor);
    static QByteArray longo(qint32 valor);
    static QByteArray moeda(qint64 decimosDeMilesimo);
    static QByteArray simples(float valor);
    static QByteArray duplo(double valor);
    /// `palavras`: the highest first.
    static QByteArray decimal(bool negativo, const QList<quint32> &palavras);
    QByteArray memoEmLinha(const QByteArray &bytes) const;
    QByteArray memoEmUmRegistro(const QByteArray &bytes);
    /// Pieces of `pedaco` bytes; 0 for the largest that fit.
    QByteArray memoEmCadeia(const QByteArray &bytes, qsizetype pedaco = 0);
    /// The shortest form, as the engine chooses it.
    QByteArray memo(const QByteArray &bytes);

    /// The book's tables with the usual columns and no rows.
    Tabela Receitas() const;
    Tabela Ingredientes() const;

    QByteArray Gerar(const QList<Tabela> &tabelas);

    /// Of the file made last: the definition page of the n-th table, its data pages, the place of a record.
    qint64 Definicao(int tabela) const { return m_definicoes[tabela]; }
    QList<qint64> Paginas(int tabela) const { return m_paginasDasTabelas[tabela]; }
    qint64 LugarDaPagina(qint64 pagina) const { return pagina * m_tamanho; }

    // What may be otherwise than usual.
    quint8 versao;
    quint16 paginaDeCodigo = 1252;
    quint32 chave = 0;          ///< not 0: pages are encoded with it
    QByteArray senha;           ///< as it stands, unmasked, in the header
    QList<Tabela> soNoCatalogo; ///< objects without pages: queries, linked tables

private:
    struct Registro {
        QByteArray bytes;
        quint16 marcas;
    };
    struct Pagina {
        quint32 dono = 0;
        QList<Registro> registros = {}; ///< of a data page
        QByteArray pronta = {};         ///< any other page
    };
    static constexpr quint32 kLval = 0x4C41564C;

    bool Jet3() const { return m_jet == 3; }
    qint64 NovaPagina(quint32 dono);
    qint64 Ocupado(const Pagina &pagina) const;
    quint32 Guardar(qint64 &pagina, quint32 dono, const QByteArray &bytes, quint16 marcas = 0);
    QByteArray Cabecalho() const;
    QByteArray BytesDaPagina(const Pagina &pagina) const;
    QByteArray BytesDaLinha(const Tabela &tabela, const Linha &linha) const;
    QByteArray Definicao(const Tabela &tabela, int linhas, quint32 mapa, quint32 mapaComLugar) const;
    void GravarDefinicao(qint64 pagina, const QByteArray &fluxo);
    int GravarLinhas(const Tabela &tabela, qint64 definicao, QList<qint64> &paginas);
    quint32 GravarMapa(const QList<qint64> &paginas, bool porReferencia);
    QByteArray MapaEmLinha(const QList<qint64> &paginas) const;
    void GravarTabela(Tabela tabela, qint64 definicao, int numero);

    int m_jet;
    qint64 m_tamanho;
    QList<Pagina> m_paginas;
    qint64 m_paginaDeLongos = 0;
    qint64 m_paginaDeMapas = 0;
    QList<qint64> m_definicoes;
    QList<QList<qint64>> m_paginasDasTabelas;
};
