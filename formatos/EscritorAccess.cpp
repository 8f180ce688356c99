#include "formatos/EscritorAccess.h"

#include "store/access/Rc4.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
using Formatos::EscritorAccess;

constexpr qsizetype kPagina = 4096;
constexpr qsizetype kCabecalhoDeDados = 14;
constexpr qsizetype kMaiorRegistro = 4076;
constexpr qsizetype kMaiorEmLinha = 64;
constexpr int kMaisRegistros = 255;
constexpr qsizetype kMapa = 69;
constexpr qint64 kBitsEmLinha = 512;
constexpr qint64 kBitsPorPagina = (kPagina - 4) * 8;
constexpr qint64 kMaisPaginas = (qint64(1) << 31) / kPagina;
constexpr qsizetype kLugarNoIndice = 3616;
constexpr qsizetype kInicioDoIndice = 480;
constexpr quint32 kMarca = 0x659;
constexpr quint32 kLval = 0x4C41564C;

enum Tipo : quint8 { SimNao = 1, Byte, Inteiro, Longo, Duplo = 7, DataHora, Binario, Texto, Ole, Memo };

void Por16(QByteArray &b, quint32 v)
{
    const auto le = qToLittleEndian(static_cast<quint16>(v));
    b.append(reinterpret_cast<const char *>(&le), 2);
}
void Por32(QByteArray &b, quint32 v)
{
    const quint32 le = qToLittleEndian(v);
    b.append(reinterpret_cast<const char *>(&le), 4);
}
void Por32Grande(QByteArray &b, quint32 v)
{
    const quint32 be = qToBigEndian(v);
    b.append(reinterpret_cast<const char *>(&be), 4);
}
void Em16(QByteArray &b, qsizetype lugar, quint32 v)
{
    const auto le = qToLittleEndian(static_cast<quint16>(v));
    std::memcpy(b.data() + lugar, &le, 2);
}
void Em32(QByteArray &b, qsizetype lugar, quint32 v)
{
    const quint32 le = qToLittleEndian(v);
    std::memcpy(b.data() + lugar, &le, 4);
}
void EmDuplo(QByteArray &b, qsizetype lugar, double v)
{
    quint64 bits = 0;
    std::memcpy(&bits, &v, 8);
    bits = qToLittleEndian(bits);
    std::memcpy(b.data() + lugar, &bits, 8);
}

quint32 Ponteiro(qint64 pagina, int registro)
{
    return static_cast<quint32>(pagina * 256 + registro);
}

struct Coluna {
    const char *nome;
    quint8 tipo;
    int fixa;     ///< offset in the fixed area, or -1
    int variavel; ///< index among the variable ones, or -1
    quint8 marcas;
};

int TamanhoDe(quint8 tipo)
{
    switch (tipo) {
    case SimNao:
    case Byte: return 1;
    case Inteiro: return 2;
    case Longo: return 4;
    case Duplo:
    case DataHora: return 8;
    case Binario:
    case Texto: return 510;
    default: return 0;
    }
}

/// A value of a row: bytes of a fixed column or of a variable one, or NULL.
using Valor = std::optional<QByteArray>;

struct Indice {
    const char *nome;
    QList<int> colunas;
    quint8 marcas;
    quint8 especie;
    QList<QByteArray> entradas = {}; ///< key, page and row
    qint64 raiz = 0;
    QList<qint64> paginas = {};
};

struct Tabela {
    qint64 definicao = 0;
    quint8 tipo = 0x4E;
    QList<Coluna> colunas;
    QList<Indice> indices; ///< in the order of their names
    QList<qint64> paginas = {};
    QList<QList<qint64>> paginasDeLongos = {}; ///< of each memo or OLE column, in their order
    quint32 linhas = 0;
    quint32 contador = 0;
};

QByteArray EmUtf16(const QString &texto)
{
    QByteArray bytes;
    bytes.reserve(texto.size() * 2);
    for (const QChar c : texto)
        Por16(bytes, c.unicode());
    return bytes;
}

/// As the engine stores it: one byte a letter where all letters allow it.
QByteArray BytesDoTexto(QString texto)
{
    while (texto.startsWith(QChar(0xFEFF)))
        texto.remove(0, 1);
    const bool estreito = texto.size() >= 3 && texto.size() <= 1024 &&
                          std::all_of(texto.begin(), texto.end(), [](QChar c) { return c.unicode() >= 1 && c.unicode() <= 0xFF; });
    if (!estreito)
        return EmUtf16(texto);
    return "\xFF\xFE" + texto.toLatin1();
}

Valor DoTexto(const EscritorAccess::Texto &texto)
{
    return texto ? Valor(BytesDoTexto(texto->left(EscritorAccess::kMaiorTexto))) : std::nullopt;
}

Valor DoDuplo(const EscritorAccess::Numero &numero)
{
    if (!numero)
        return std::nullopt;
    QByteArray bytes(8, '\0');
    EmDuplo(bytes, 0, *numero);
    return bytes;
}

Valor DoLongo(quint32 numero)
{
    QByteArray bytes;
    Por32(bytes, numero);
    return bytes;
}

QByteArray ChaveDoLongo(quint32 numero)
{
    QByteArray chave("\x7F");
    Por32Grande(chave, numero ^ 0x80000000U);
    return chave;
}

QByteArray ChaveDoNome(const char *nome)
{
    static constexpr std::array<unsigned char, 26> kCodigos = {0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59,
                                                               0x5B, 0x5C, 0x5E, 0x60, 0x62, 0x64, 0x66, 0x68, 0x69,
                                                               0x6B, 0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78};
    QByteArray chave("\x7F");
    for (const char *c = nome; *c; ++c)
        chave += static_cast<char>(kCodigos[static_cast<std::size_t>((*c | 0x20) - 'a')]);
    chave += '\x01';
    chave += '\0';
    return chave;
}

class Arquivo
{
public:
    QByteArray Gerar(const QList<EscritorAccess::Receita> &receitas, const QList<EscritorAccess::Ingrediente> &ingredientes);

private:
    /// A data page that takes records until it is full.
    struct Aberta {
        qint64 numero = 0;
        QByteArray registros = {}; ///< from the page's end downwards, so in reverse
        QList<qsizetype> lugares = {};
        quint32 dono = 0;
    };

    qint64 NovaPagina()
    {
        m_paginas.append(QByteArray());
        return m_paginas.size() - 1;
    }
    /// The record's pointer; a new page is asked for when it does not fit, and noted in `paginas`.
    quint32 Guardar(Aberta &aberta, const QByteArray &registro, QList<qint64> &paginas);
    void Fechar(Aberta &aberta);
    quint32 GuardarLongo(Aberta &aberta, const QByteArray &dados, QList<qint64> &paginas);
    Valor DoMemo(Aberta &aberta, const EscritorAccess::Texto &texto, QList<qint64> &paginas);
    static QByteArray BytesDaLinha(const Tabela &tabela, const QList<Valor> &valores);
    quint32 AcrescentarLinha(Tabela &tabela, Aberta &aberta, const QList<Valor> &valores);
    void GravarIndice(const Tabela &tabela, Indice &indice);
    QByteArray PaginaDeIndice(qint64 definicao, const QList<QByteArray> &entradas, int nivel, qint64 antes, qint64 depois,
                              qint64 cauda) const;
    QByteArray Mapa(const QList<qint64> &paginas);
    void GravarDefinicao(Tabela &tabela, Aberta &mapas);
    void GravarLivres();
    static QByteArray Cabecalho();
    void Catalogo(Tabela &objetos, Tabela &acessos);

    QList<QByteArray> m_paginas;
    QList<qint64> m_paginasDosMapas;
};

quint32 Arquivo::Guardar(Aberta &aberta, const QByteArray &registro, QList<qint64> &paginas)
{
    const qsizetype ocupado = kCabecalhoDeDados + 2 * aberta.lugares.size() + aberta.registros.size();
    if (aberta.numero == 0 || ocupado + 2 + registro.size() > kPagina || aberta.lugares.size() >= kMaisRegistros) {
        Fechar(aberta);
        aberta.numero = NovaPagina();
        paginas += aberta.numero;
    }
    aberta.registros.prepend(registro);
    aberta.lugares += kPagina - aberta.registros.size();
    return Ponteiro(aberta.numero, static_cast<int>(aberta.lugares.size() - 1));
}

void Arquivo::Fechar(Aberta &aberta)
{
    if (aberta.numero == 0)
        return;
    QByteArray pagina(kPagina, '\0');
    pagina[0] = 1;
    pagina[1] = 1;
    const qsizetype menor = kPagina - aberta.registros.size();
    Em16(pagina, 2, static_cast<quint32>(menor - kCabecalhoDeDados - 2 * aberta.lugares.size()));
    Em32(pagina, 4, aberta.dono);
    Em16(pagina, 12, static_cast<quint32>(aberta.lugares.size()));
    for (qsizetype i = 0; i < aberta.lugares.size(); ++i)
        Em16(pagina, kCabecalhoDeDados + 2 * i, static_cast<quint32>(aberta.lugares[i]));
    std::memcpy(pagina.data() + menor, aberta.registros.constData(), static_cast<std::size_t>(aberta.registros.size()));
    m_paginas[aberta.numero] = pagina;
    aberta.numero = 0;
    aberta.registros.clear();
    aberta.lugares.clear();
}

/// A long value in records of its own; the last piece first, so that each knows the next.
quint32 Arquivo::GuardarLongo(Aberta &aberta, const QByteArray &dados, QList<qint64> &paginas)
{
    if (dados.size() <= kMaiorRegistro)
        return Guardar(aberta, dados, paginas);
    constexpr qsizetype kPedaco = kMaiorRegistro - 4;
    quint32 seguinte = 0;
    for (qsizetype inicio = (dados.size() - 1) / kPedaco * kPedaco; inicio >= 0; inicio -= kPedaco) {
        QByteArray registro;
        Por32(registro, seguinte);
        registro += dados.mid(inicio, kPedaco);
        seguinte = Guardar(aberta, registro, paginas);
    }
    return seguinte;
}

Valor Arquivo::DoMemo(Aberta &aberta, const EscritorAccess::Texto &texto, QList<qint64> &paginas)
{
    if (!texto)
        return std::nullopt;
    const QByteArray dados = BytesDoTexto(*texto);
    const auto tamanho = static_cast<quint32>(dados.size());
    QByteArray valor;
    if (dados.size() <= kMaiorEmLinha) {
        Por32(valor, tamanho | 0x80000000U);
        Por32(valor, 0);
        Por32(valor, 0);
        return valor + dados;
    }
    const quint32 lugar = GuardarLongo(aberta, dados, paginas);
    Por32(valor, tamanho | (dados.size() <= kMaiorRegistro ? 0x40000000U : 0U));
    Por32(valor, lugar);
    Por32(valor, 0);
    return valor;
}

QByteArray Arquivo::BytesDaLinha(const Tabela &tabela, const QList<Valor> &valores)
{
    int fixos = 0;
    int variaveis = 0;
    for (const Coluna &coluna : tabela.colunas) {
        if (coluna.fixa >= 0 && coluna.tipo != SimNao)
            fixos = std::max(fixos, coluna.fixa + TamanhoDe(coluna.tipo));
        variaveis = std::max(variaveis, coluna.variavel + 1);
    }
    QByteArray linha;
    Por16(linha, static_cast<quint32>(tabela.colunas.size()));
    linha.append(QByteArray(fixos, '\0'));
    QByteArray mascara((tabela.colunas.size() + 7) / 8, '\0');
    QList<QByteArray> dados(variaveis);
    for (qsizetype i = 0; i < tabela.colunas.size(); ++i) {
        const Coluna &coluna = tabela.colunas[i];
        if (!valores[i])
            continue;
        mascara[i / 8] = static_cast<char>(static_cast<unsigned char>(mascara[i / 8]) | (1U << (i % 8)));
        if (coluna.tipo == SimNao)
            continue;
        if (coluna.fixa >= 0)
            std::memcpy(linha.data() + 2 + coluna.fixa, valores[i]->constData(), static_cast<std::size_t>(valores[i]->size()));
        else
            dados[coluna.variavel] = *valores[i];
    }
    QList<qsizetype> inicios;
    for (const QByteArray &dado : dados) {
        inicios += linha.size();
        linha += dado;
    }
    inicios += linha.size();
    for (qsizetype i = inicios.size(); i > 0; --i)
        Por16(linha, static_cast<quint32>(inicios[i - 1]));
    Por16(linha, static_cast<quint32>(variaveis));
    return linha + mascara;
}

quint32 Arquivo::AcrescentarLinha(Tabela &tabela, Aberta &aberta, const QList<Valor> &valores)
{
    aberta.dono = static_cast<quint32>(tabela.definicao);
    ++tabela.linhas;
    return Guardar(aberta, BytesDaLinha(tabela, valores), tabela.paginas);
}

QByteArray Entrada(const QByteArray &chave, quint32 lugar)
{
    QByteArray entrada = chave;
    Por32Grande(entrada, lugar); // three bytes of page, one of row
    return entrada;
}

QByteArray Arquivo::PaginaDeIndice(qint64 definicao, const QList<QByteArray> &entradas, int nivel, qint64 antes,
                                   qint64 depois, qint64 cauda) const
{
    QByteArray pagina(kPagina, '\0');
    qsizetype fim = 0;
    for (const QByteArray &entrada : entradas) {
        std::memcpy(pagina.data() + kInicioDoIndice + fim, entrada.constData(), static_cast<std::size_t>(entrada.size()));
        fim += entrada.size();
        const qsizetype lugar = 27 + fim / 8;
        pagina[lugar] = static_cast<char>(static_cast<unsigned char>(pagina[lugar]) | (1U << (fim % 8)));
    }
    pagina[0] = nivel == 0 ? 4 : 3;
    pagina[1] = 1;
    Em16(pagina, 2, static_cast<quint32>(kLugarNoIndice - fim));
    Em32(pagina, 4, static_cast<quint32>(definicao));
    Em32(pagina, 12, static_cast<quint32>(antes));
    Em32(pagina, 16, static_cast<quint32>(depois));
    Em32(pagina, 20, static_cast<quint32>(cauda));
    pagina[26] = static_cast<char>(nivel);
    return pagina;
}

/// Leaves, then nodes above them until there is one page: the root.
void Arquivo::GravarIndice(const Tabela &tabela, Indice &indice)
{
    std::sort(indice.entradas.begin(), indice.entradas.end(), [](const QByteArray &a, const QByteArray &b) {
        const int ordem = std::memcmp(a.constData(), b.constData(), static_cast<std::size_t>(std::min(a.size(), b.size())));
        return ordem != 0 ? ordem < 0 : a.size() < b.size();
    });
    const auto repartir = [](const QList<QByteArray> &entradas, qsizetype aMais) {
        QList<QList<QByteArray>> grupos(1);
        qsizetype ocupado = 0;
        for (const QByteArray &entrada : entradas) {
            if (ocupado + entrada.size() + aMais > kLugarNoIndice) {
                grupos.append(QList<QByteArray>());
                ocupado = 0;
            }
            grupos.last() += entrada;
            ocupado += entrada.size() + aMais;
        }
        return grupos;
    };
    QList<QList<QByteArray>> grupos = repartir(indice.entradas, 0);
    QList<qint64> paginas;
    for (qsizetype i = 0; i < grupos.size(); ++i)
        paginas += NovaPagina();
    indice.paginas = paginas;
    QList<QByteArray> ultimas;
    for (qsizetype i = 0; i < grupos.size(); ++i) {
        m_paginas[paginas[i]] = PaginaDeIndice(tabela.definicao, grupos[i], 0, i > 0 ? paginas[i - 1] : 0,
                                               i + 1 < paginas.size() ? paginas[i + 1] : 0, 0);
        ultimas += grupos[i].isEmpty() ? QByteArray() : grupos[i].last();
    }
    for (int nivel = 1; paginas.size() > 1; ++nivel) {
        // How many children a node takes: one more at level 1, whose last leaf is not listed but its tail.
        const qsizetype cabem = kLugarNoIndice / (ultimas.first().size() + 4) + (nivel == 1 ? 1 : 0);
        QList<qsizetype> quantos;
        for (qsizetype resta = paginas.size(); resta > 0; resta -= quantos.last())
            quantos += std::min(resta, cabem);
        // No node has the tail as its only child.
        if (nivel == 1 && quantos.size() > 1 && quantos.last() == 1) {
            --quantos[quantos.size() - 2];
            ++quantos.last();
        }
        QList<qint64> acima;
        for (qsizetype i = 0; i < quantos.size(); ++i)
            acima += NovaPagina();
        QList<QByteArray> ultimasAcima;
        qsizetype filho = 0;
        for (qsizetype i = 0; i < quantos.size(); ++i) {
            QList<QByteArray> entradas;
            const qsizetype fim = filho + quantos[i];
            for (qsizetype k = filho; k < fim - (nivel == 1 ? 1 : 0); ++k) {
                QByteArray entrada = ultimas[k];
                Por32Grande(entrada, static_cast<quint32>(paginas[k]));
                entradas += entrada;
            }
            m_paginas[acima[i]] = PaginaDeIndice(tabela.definicao, entradas, nivel, i > 0 ? acima[i - 1] : 0,
                                                 i + 1 < acima.size() ? acima[i + 1] : 0, nivel == 1 ? paginas[fim - 1] : 0);
            ultimasAcima += ultimas[fim - 1];
            filho = fim;
        }
        indice.paginas += acima;
        paginas = acima;
        ultimas = ultimasAcima;
    }
    indice.raiz = paginas.first();
}

/// The record of a map: in itself when its pages lie close together, else by pages of bits.
QByteArray Arquivo::Mapa(const QList<qint64> &paginas)
{
    QByteArray mapa(kMapa, '\0');
    const qint64 primeira = paginas.isEmpty() ? 0 : *std::min_element(paginas.begin(), paginas.end()) / 8 * 8;
    const qint64 ultima = paginas.isEmpty() ? 0 : *std::max_element(paginas.begin(), paginas.end());
    const auto marcar = [](QByteArray &bytes, qsizetype inicio, qint64 bit) {
        const qsizetype lugar = inicio + bit / 8;
        bytes[lugar] = static_cast<char>(static_cast<unsigned char>(bytes[lugar]) | (1U << (bit % 8)));
    };
    if (ultima - primeira < kBitsEmLinha) {
        Em32(mapa, 1, static_cast<quint32>(primeira));
        for (const qint64 pagina : paginas)
            marcar(mapa, 5, pagina - primeira);
        return mapa;
    }
    mapa[0] = 1;
    QHash<qint64, QByteArray> bits;
    for (const qint64 pagina : paginas) {
        QByteArray &folha = bits[pagina / kBitsPorPagina];
        if (folha.isEmpty())
            folha = QByteArray("\x05\x01\0\0", 4) + QByteArray(kPagina - 4, '\0');
        marcar(folha, 4, pagina % kBitsPorPagina);
    }
    for (auto it = bits.begin(); it != bits.end(); ++it) {
        const qint64 numero = NovaPagina();
        m_paginas[numero] = it.value();
        Em32(mapa, 1 + 4 * it.key(), static_cast<quint32>(numero));
    }
    return mapa;
}

void Arquivo::GravarDefinicao(Tabela &tabela, Aberta &mapas)
{
    const auto novoMapa = [&](const QList<qint64> &paginas) { return Guardar(mapas, Mapa(paginas), m_paginasDosMapas); };
    const quint32 dela = novoMapa(tabela.paginas);
    const quint32 comLugar = novoMapa({});
    int variaveis = 0;
    for (const Coluna &coluna : tabela.colunas)
        variaveis = std::max(variaveis, coluna.variavel + 1);

    QByteArray d(63, '\0');
    d[0] = 2;
    d[1] = 1;
    Em32(d, 12, kMarca);
    Em32(d, 16, tabela.linhas);
    Em32(d, 20, tabela.contador);
    Em32(d, 24, 1);
    d[40] = static_cast<char>(tabela.tipo);
    Em16(d, 41, static_cast<quint32>(tabela.colunas.size()));
    Em16(d, 43, static_cast<quint32>(variaveis));
    Em16(d, 45, static_cast<quint32>(tabela.colunas.size()));
    Em32(d, 47, static_cast<quint32>(tabela.indices.size()));
    Em32(d, 51, static_cast<quint32>(tabela.indices.size()));
    Em32(d, 55, dela);
    Em32(d, 59, comLugar);
    for (const Indice &indice : tabela.indices) {
        // Entries stand in order: distinct keys are where the key, all but the last four bytes, changes.
        quint32 distintas = 0;
        for (qsizetype i = 0; i < indice.entradas.size(); ++i)
            if (i == 0 || indice.entradas[i].chopped(4) != indice.entradas[i - 1].chopped(4))
                ++distintas;
        Por32(d, 0);
        Por32(d, distintas);
        Por32(d, 0);
    }
    int antes = 0;
    for (qsizetype i = 0; i < tabela.colunas.size(); ++i) {
        const Coluna &coluna = tabela.colunas[i];
        const bool texto = coluna.tipo == Texto || coluna.tipo == Memo;
        d += static_cast<char>(coluna.tipo);
        Por32(d, kMarca);
        Por16(d, static_cast<quint32>(i));
        Por16(d, static_cast<quint32>(coluna.variavel >= 0 ? coluna.variavel : antes));
        Por16(d, static_cast<quint32>(i));
        Por16(d, texto ? 0x0409 : 0);
        Por16(d, 0);
        d += static_cast<char>(coluna.marcas);
        d += static_cast<char>(texto ? 1 : 0);
        Por32(d, 0);
        Por16(d, static_cast<quint32>(std::max(coluna.fixa, 0)));
        Por16(d, static_cast<quint32>(TamanhoDe(coluna.tipo)));
        if (coluna.variavel >= 0)
            ++antes;
    }
    const auto nome = [&](const char *texto) {
        const QByteArray utf16 = EmUtf16(QString::fromUtf8(texto));
        Por16(d, static_cast<quint32>(utf16.size()));
        d += utf16;
    };
    for (const Coluna &coluna : tabela.colunas)
        nome(coluna.nome);
    for (const Indice &indice : tabela.indices) {
        Por32(d, 0x783);
        for (int k = 0; k < 10; ++k) {
            Por16(d, k < indice.colunas.size() ? static_cast<quint32>(indice.colunas[k]) : 0xFFFFU);
            d += static_cast<char>(k < indice.colunas.size() ? 1 : 0);
        }
        Por32(d, novoMapa(indice.paginas));
        Por32(d, static_cast<quint32>(indice.raiz));
        Por32(d, 0);
        d += static_cast<char>(indice.marcas);
        d += QByteArray(5, '\0');
    }
    for (qsizetype i = 0; i < tabela.indices.size(); ++i) {
        Por32(d, kMarca);
        Por32(d, static_cast<quint32>(i));
        Por32(d, static_cast<quint32>(i));
        d += '\0';
        Por32(d, 0xFFFFFFFFU);
        Por32(d, 0);
        d += '\x04';
        d += '\x04';
        d += static_cast<char>(tabela.indices[i].especie);
        Por32(d, 0);
    }
    for (const Indice &indice : tabela.indices)
        nome(indice.nome);
    int longa = 0;
    for (qsizetype i = 0; i < tabela.colunas.size(); ++i)
        if (tabela.colunas[i].tipo == Memo || tabela.colunas[i].tipo == Ole) {
            Por16(d, static_cast<quint32>(i));
            Por32(d, novoMapa(tabela.paginasDeLongos.value(longa++)));
            Por32(d, novoMapa({}));
        }
    Por16(d, 0xFFFF);
    Em32(d, 8, static_cast<quint32>(d.size()));
    Em16(d, 2, static_cast<quint32>(kPagina - d.size() - 8));
    m_paginas[tabela.definicao] = d.leftJustified(kPagina, '\0');
}

QByteArray Arquivo::Cabecalho()
{
    QByteArray pagina(kPagina, '\0');
    std::memcpy(pagina.data(), "\0\1\0\0Standard Jet DB", 19);
    Em32(pagina, 0x14, 1);
    const std::array<quint32, 6> inicio = {0x100, 0x101, 2, 3, 4, 5};
    for (std::size_t i = 0; i < inicio.size(); ++i)
        Em32(pagina, 0x18 + 4 * static_cast<qsizetype>(i), inicio[i]);
    Em16(pagina, 0x3C, 1252);
    for (qsizetype i = 0; i < 10; ++i)
        Em32(pagina, 0x42 + 4 * i, 0xA559); // no password, under the mask of the date
    Em16(pagina, 0x6A, 0x261C);
    Em16(pagina, 0x6E, 0x0409);
    std::memcpy(pagina.data() + 0x72, "\x3E\x85\xD3\x3B\x3E\xAB\xE4\x40", 8);
    QByteArray mascarada = pagina.mid(0x18, 128);
    mascarada = Access::Rc4(QByteArray("\xC7\xDA\x39\x6B", 4), mascarada);
    std::memcpy(pagina.data() + 0x18, mascarada.constData(), 128);
    std::memcpy(pagina.data() + 0x98, "\x54\x06\0\0"
                                      "4.0",
                7);
    for (qsizetype i = 0; i < 256; ++i)
        Em16(pagina, 0xE00 + 2 * i, i == 0 ? 0x0101 : 0x0100);
    return pagina;
}

/// Page 1: every page from the file's end to the map's reach is free.
void Arquivo::GravarLivres()
{
    QByteArray livres(kMapa, '\0');
    const auto marcar = [](QByteArray &bytes, qsizetype inicio, qint64 bit) {
        const qsizetype lugar = inicio + bit / 8;
        bytes[lugar] = static_cast<char>(static_cast<unsigned char>(bytes[lugar]) | (1U << (bit % 8)));
    };
    if (m_paginas.size() <= kBitsEmLinha) {
        for (qint64 i = m_paginas.size(); i < kBitsEmLinha; ++i)
            marcar(livres, 5, i);
    } else {
        livres[0] = 1;
        // The map's own pages are pages too: they are asked for before any is counted.
        QList<qint64> folhas;
        while (folhas.size() * kBitsPorPagina < m_paginas.size())
            folhas += NovaPagina();
        for (qsizetype f = 0; f < folhas.size(); ++f) {
            QByteArray folha = QByteArray("\x05\x01\0\0", 4) + QByteArray(kPagina - 4, '\0');
            for (qint64 bit = 0; bit < kBitsPorPagina; ++bit)
                if (f * kBitsPorPagina + bit >= m_paginas.size())
                    marcar(folha, 4, bit);
            m_paginas[folhas[f]] = folha;
            Em32(livres, 1 + 4 * f, static_cast<quint32>(folhas[f]));
        }
    }
    Aberta pagina;
    pagina.numero = 1;
    pagina.dono = 1;
    QList<qint64> nenhuma;
    Guardar(pagina, livres, nenhuma);
    Guardar(pagina, QByteArray(kMapa, '\0'), nenhuma);
    Fechar(pagina);
}

const QByteArray kMotor("\x65\x89"), kAdministrador("\x64\x8B"), kUsuarios("\x65\x8B"), kCriador("\x65\x8E");
constexpr double kDia = 42329.0; ///< when the catalogue says it was made; any day will do

void Arquivo::Catalogo(Tabela &objetos, Tabela &acessos)
{
    constexpr quint32 kSistema = 0x80000000U;
    constexpr quint32 kRaiz = 0x0F000000U, kTabelas = 0x0F000001U, kBancos = 0x0F000002U, kRelacoes = 0x0F000003U;
    constexpr quint32 kMSysDb = 0x10000000U;
    struct Objeto {
        quint32 id, pai;
        const char *nome;
        int tipo;
        QByteArray dono;
        quint32 marcas;
    };
    const QList<Objeto> lista = {{kTabelas, kRaiz, "Tables", 3, kMotor, kSistema},
                                 {kBancos, kRaiz, "Databases", 3, kMotor, kSistema},
                                 {kRelacoes, kRaiz, "Relationships", 3, kMotor, kSistema},
                                 {kMSysDb, kBancos, "MSysDb", 2, kAdministrador, kSistema},
                                 {2, kTabelas, "MSysObjects", 1, kMotor, kSistema},
                                 {3, kTabelas, "MSysACEs", 1, kMotor, kSistema},
                                 {4, kTabelas, "MSysQueries", 1, kMotor, kSistema},
                                 {5, kTabelas, "MSysRelationships", 1, kMotor, kSistema},
                                 {6, kTabelas, "Receitas", 1, kAdministrador, 0},
                                 {7, kTabelas, "Ingredientes", 1, kAdministrador, 0}};
    Aberta aberta;
    for (const Objeto &objeto : lista) {
        QByteArray tipo;
        Por16(tipo, static_cast<quint32>(objeto.tipo));
        QList<Valor> valores(objetos.colunas.size());
        valores[0] = DoLongo(objeto.id);
        valores[1] = DoLongo(objeto.pai);
        valores[2] = BytesDoTexto(QString::fromLatin1(objeto.nome));
        valores[3] = tipo;
        valores[4] = DoDuplo(kDia);
        valores[5] = DoDuplo(kDia);
        valores[6] = objeto.dono;
        valores[7] = DoLongo(objeto.marcas);
        const quint32 lugar = AcrescentarLinha(objetos, aberta, valores);
        objetos.indices[0].entradas += Entrada(ChaveDoLongo(objeto.id), lugar);
        objetos.indices[1].entradas += Entrada(ChaveDoLongo(objeto.pai) + ChaveDoNome(objeto.nome), lugar);
    }
    Fechar(aberta);

    struct Acesso {
        quint32 objeto;
        QByteArray quem;
        quint32 mascara;
        bool herda;
    };
    const QList<Acesso> direitos = {{2, kAdministrador, 393216, false},
                                    {3, kAdministrador, 393216, false},
                                    {4, kAdministrador, 393216, false},
                                    {5, kAdministrador, 917504, false},
                                    {2, kUsuarios, 20, false},
                                    {4, kUsuarios, 20, false},
                                    {5, kUsuarios, 20, false},
                                    {kTabelas, kCriador, 983294, true},
                                    {kTabelas, kAdministrador, 393217, false},
                                    {kTabelas, kUsuarios, 1048319, true},
                                    {kRelacoes, kCriador, 983294, true},
                                    {kRelacoes, kAdministrador, 393217, false},
                                    {kRelacoes, kUsuarios, 1048575, true},
                                    {kBancos, kAdministrador, 393216, false},
                                    {kMSysDb, kAdministrador, 393230, false},
                                    {kMSysDb, kUsuarios, 14, false},
                                    {6, kAdministrador, 1048319, false},
                                    {6, kUsuarios, 1048319, false},
                                    {7, kAdministrador, 1048319, false},
                                    {7, kUsuarios, 1048319, false}};
    Aberta outra;
    for (const Acesso &acesso : direitos) {
        const QList<Valor> valores = {DoLongo(acesso.objeto), acesso.quem, DoLongo(acesso.mascara),
                                      acesso.herda ? Valor(QByteArray()) : std::nullopt};
        const quint32 lugar = AcrescentarLinha(acessos, outra, valores);
        acessos.indices[0].entradas += Entrada(ChaveDoLongo(acesso.objeto), lugar);
    }
    Fechar(outra);
}

QByteArray Arquivo::Gerar(const QList<EscritorAccess::Receita> &receitas, const QList<EscritorAccess::Ingrediente> &ingredientes)
{
    constexpr quint8 kF = 0x13, kV = 0x12; // of the system's columns
    for (int i = 0; i < 8; ++i)
        NovaPagina();
    Tabela objetos;
    objetos.definicao = 2;
    objetos.tipo = 0x53;
    objetos.colunas = {{"Id", Longo, 0, -1, kF},         {"ParentId", Longo, 4, -1, kF},
                       {"Name", Texto, -1, 0, kV},       {"Type", Inteiro, 8, -1, kF},
                       {"DateCreate", DataHora, 10, -1, kF}, {"DateUpdate", DataHora, 18, -1, kF},
                       {"Owner", Binario, -1, 1, 0x32},  {"Flags", Longo, 26, -1, kF},
                       {"Database", Memo, -1, 2, kV},    {"Connect", Memo, -1, 3, kV},
                       {"ForeignName", Texto, -1, 4, kV}, {"RmtInfoShort", Binario, -1, 5, kV},
                       {"RmtInfoLong", Ole, -1, 6, kV},  {"Lv", Ole, -1, 7, kV},
                       {"LvProp", Ole, -1, 8, kV},       {"LvModule", Ole, -1, 9, kV},
                       {"LvExtra", Ole, -1, 10, kV}};
    objetos.indices = {{"Id", {0}, 0x81, 1}, {"ParentIdName", {1, 2}, 0x81, 0}};
    Tabela acessos;
    acessos.definicao = 3;
    acessos.tipo = 0x53;
    acessos.colunas = {{"ObjectId", Longo, 0, -1, kF}, {"SID", Binario, -1, 0, 0x32}, {"ACM", Longo, 4, -1, kF},
                       {"FInheritable", SimNao, 0, -1, kF}};
    acessos.indices = {{"ObjectId", {0}, 0x88, 0}};
    Tabela consultas;
    consultas.definicao = 4;
    consultas.tipo = 0x53;
    consultas.colunas = {{"ObjectId", Longo, 0, -1, kF}, {"Attribute", Byte, 4, -1, kF}, {"Order", Binario, -1, 0, kV},
                         {"Name1", Texto, -1, 1, kV},    {"Name2", Texto, -1, 2, kV},    {"Expression", Memo, -1, 3, kV},
                         {"Flag", Inteiro, 5, -1, kF},   {"LvExtra", Longo, 7, -1, kF}};
    consultas.indices = {{"ObjectIdAttribute", {0, 1, 2}, 0x81, 1}};
    Tabela relacoes;
    relacoes.definicao = 5;
    relacoes.tipo = 0x53;
    relacoes.colunas = {{"szRelationship", Texto, -1, 0, kV}, {"grbit", Longo, 0, -1, kF},
                        {"ccolumn", Longo, 4, -1, kF},        {"icolumn", Longo, 8, -1, kF},
                        {"szObject", Texto, -1, 1, kV},       {"szColumn", Texto, -1, 2, kV},
                        {"szReferencedObject", Texto, -1, 3, kV}, {"szReferencedColumn", Texto, -1, 4, kV}};
    relacoes.indices = {{"szObject", {4}, 0x82, 0}, {"szReferencedObject", {6}, 0x82, 0}, {"szRelationship", {0}, 0x82, 0}};
    Catalogo(objetos, acessos);

    Tabela tabelaDeReceitas;
    tabelaDeReceitas.definicao = 6;
    tabelaDeReceitas.colunas = {{"id_receitas", Longo, 0, -1, 7}, {"Nome", Texto, -1, 0, 2},
                                {"Data", DataHora, 4, -1, 3},     {"Classificacao", Texto, -1, 1, 2},
                                {"Modo", Memo, -1, 2, 2},         {"Tipo", Duplo, 12, -1, 3},
                                {"Origem", Texto, -1, 3, 2},      {"Porcoes", Duplo, 20, -1, 3},
                                {"Preparo", Texto, -1, 4, 2},     {"Tipo_Calorias", Texto, -1, 5, 2},
                                {"Calorias", Duplo, 28, -1, 3},   {"Observacao", Memo, -1, 6, 2},
                                {"Figura", Texto, -1, 7, 2}};
    tabelaDeReceitas.indices = {{"PrimaryKey", {0}, 0x89, 1}};
    Aberta aberta;
    Aberta modos;
    Aberta observacoes;
    modos.dono = kLval;
    observacoes.dono = kLval;
    tabelaDeReceitas.paginasDeLongos = {{}, {}};
    for (const EscritorAccess::Receita &r : receitas) {
        const auto id = static_cast<quint32>(r.id_receitas);
        const QList<Valor> valores = {DoLongo(id),
                                      DoTexto(r.Nome),
                                      DoDuplo(r.Data),
                                      DoTexto(r.Classificacao),
                                      DoMemo(modos, r.Modo, tabelaDeReceitas.paginasDeLongos[0]),
                                      DoDuplo(r.Tipo),
                                      DoTexto(r.Origem),
                                      DoDuplo(r.Porcoes),
                                      DoTexto(r.Preparo),
                                      DoTexto(r.Tipo_Calorias),
                                      DoDuplo(r.Calorias),
                                      DoMemo(observacoes, r.Observacao, tabelaDeReceitas.paginasDeLongos[1]),
                                      DoTexto(r.Figura)};
        const quint32 lugar = AcrescentarLinha(tabelaDeReceitas, aberta, valores);
        tabelaDeReceitas.indices[0].entradas += Entrada(ChaveDoLongo(id), lugar);
        tabelaDeReceitas.contador = std::max(tabelaDeReceitas.contador, id);
        if (m_paginas.size() > kMaisPaginas)
            return {};
    }
    Fechar(aberta);
    Fechar(modos);
    Fechar(observacoes);

    Tabela linhas;
    linhas.definicao = 7;
    linhas.colunas = {{"id_ingredientes", Longo, 0, -1, 7}, {"id_receitas", Longo, 4, -1, 3}, {"Ingrediente", Texto, -1, 0, 2},
                      {"Quantidade", Texto, -1, 1, 2},      {"Unidade", Texto, -1, 2, 2}};
    linhas.indices = {{"id_receitas", {1}, 0x80, 0}, {"PrimaryKey", {0}, 0x89, 1}};
    for (const EscritorAccess::Ingrediente &i : ingredientes) {
        const auto id = static_cast<quint32>(i.id_ingredientes);
        const quint32 lugar =
            AcrescentarLinha(linhas, aberta,
                             {DoLongo(id), DoLongo(static_cast<quint32>(i.id_receitas)), DoTexto(i.Ingrediente),
                              DoTexto(i.Quantidade), DoTexto(i.Unidade)});
        linhas.indices[0].entradas += Entrada(ChaveDoLongo(static_cast<quint32>(i.id_receitas)), lugar);
        linhas.indices[1].entradas += Entrada(ChaveDoLongo(id), lugar);
        linhas.contador = std::max(linhas.contador, id);
        if (m_paginas.size() > kMaisPaginas)
            return {};
    }
    Fechar(aberta);

    Aberta mapas; // of owner 0
    for (Tabela *tabela : {&objetos, &acessos, &consultas, &relacoes, &tabelaDeReceitas, &linhas}) {
        for (Indice &indice : tabela->indices)
            GravarIndice(*tabela, indice);
        GravarDefinicao(*tabela, mapas);
    }
    Fechar(mapas);
    GravarLivres();
    m_paginas[0] = Cabecalho();
    if (m_paginas.size() > kMaisPaginas)
        return {};
    QByteArray arquivo;
    arquivo.reserve(m_paginas.size() * kPagina);
    for (const QByteArray &pagina : m_paginas)
        arquivo += pagina;
    return arquivo;
}
} // namespace

QByteArray Formatos::EscritorAccess::Gerar(const QList<Receita> &receitas, const QList<Ingrediente> &ingredientes)
{
    return Arquivo().Gerar(receitas, ingredientes);
}
