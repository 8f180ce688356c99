#include "store/access/tests/EscritorJet.h"

#include "base/PaginaCodigo.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace
{
template <typename T>
QByteArray Le(T valor)
{
    QByteArray bytes(sizeof(T), Qt::Uninitialized);
    qToLittleEndian(valor, bytes.data());
    return bytes;
}
QByteArray U8(int valor)
{
    return QByteArray(1, static_cast<char>(valor));
}
QByteArray U16(qint64 valor)
{
    return Le(static_cast<quint16>(valor));
}
QByteArray U32(qint64 valor)
{
    return Le(static_cast<quint32>(valor));
}
QByteArray Zeros(qint64 quantos)
{
    return QByteArray(quantos, '\0');
}
void Por(QByteArray &bytes, qint64 lugar, const QByteArray &novos)
{
    bytes.replace(lugar, novos.size(), novos);
}

/// The cipher again, in its plainest form.
QByteArray Cifrar(const QByteArray &chave, QByteArray bytes)
{
    QByteArray s(256, '\0');
    for (int i = 0; i < 256; ++i)
        s[i] = static_cast<char>(i);
    const auto b = [](char c) { return static_cast<int>(static_cast<quint8>(c)); };
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + b(s[i]) + b(chave[i % chave.size()])) % 256;
        std::swap(s[i], s[j]);
    }
    int i = 0;
    int j = 0;
    for (char &byte : bytes) {
        i = (i + 1) % 256;
        j = (j + b(s[i])) % 256;
        std::swap(s[i], s[j]);
        byte = static_cast<char>(byte ^ s[(b(s[i]) + b(s[j])) % 256]);
    }
    return bytes;
}

int TamanhoFixo(const EscritorJet::Coluna &coluna)
{
    switch (coluna.tipo) {
    case EscritorJet::SimNao:
        return 0;
    case EscritorJet::Byte:
        return 1;
    case EscritorJet::Inteiro:
        return 2;
    case EscritorJet::Longo:
    case EscritorJet::Simples:
        return 4;
    case EscritorJet::Moeda:
    case EscritorJet::Duplo:
    case EscritorJet::DataHora:
        return 8;
    case EscritorJet::Decimal:
        return 17;
    default:
        return coluna.tamanho;
    }
}

/// Fills in the numbers that were left to their usual values.
void Completar(EscritorJet::Tabela &tabela)
{
    int variavel = 0;
    int lugar = 0;
    for (int i = 0; i < tabela.colunas.size(); ++i) {
        EscritorJet::Coluna &coluna = tabela.colunas[i];
        if (coluna.numero < 0)
            coluna.numero = i;
        if (coluna.variavel < 0)
            coluna.variavel = variavel;
        if (coluna.lugar < 0)
            coluna.lugar = lugar;
        if (coluna.fixa)
            lugar = coluna.lugar + TamanhoFixo(coluna);
        else
            variavel = coluna.variavel + 1;
    }
}

int Topo(const EscritorJet::Tabela &tabela)
{
    int topo = 0;
    for (const EscritorJet::Coluna &coluna : tabela.colunas)
        topo = std::max(topo, coluna.numero + 1);
    return topo;
}

int Variaveis(const EscritorJet::Tabela &tabela, int colunas)
{
    int total = 0;
    for (const EscritorJet::Coluna &coluna : tabela.colunas)
        if (!coluna.fixa && coluna.tipo != EscritorJet::SimNao && coluna.numero < colunas)
            total = std::max(total, coluna.variavel + 1);
    return total;
}
} // namespace

EscritorJet::Linha &EscritorJet::Tabela::Acrescentar(const QMap<QByteArray, QByteArray> &valores)
{
    linhas += Linha{.valores = valores};
    return linhas.last();
}

EscritorJet::EscritorJet(int jet)
    : versao(jet == 3 ? 0 : 1)
    , m_jet(jet)
    , m_tamanho(jet == 3 ? 2048 : 4096)
    , m_paginas(3)
{
}

QByteArray EscritorJet::texto(const QString &texto) const
{
    if (Jet3())
        return PaginaCodigo::ParaAnsi(texto);
    QByteArray bytes;
    for (const QChar c : texto)
        bytes += U16(c.unicode());
    return bytes;
}

QByteArray EscritorJet::inteiro(qint16 valor)
{
    return Le(valor);
}
QByteArray EscritorJet::longo(qint32 valor)
{
    return Le(valor);
}
QByteArray EscritorJet::moeda(qint64 decimosDeMilesimo)
{
    return Le(decimosDeMilesimo);
}
QByteArray EscritorJet::simples(float valor)
{
    return Le(valor);
}
QByteArray EscritorJet::duplo(double valor)
{
    return Le(valor);
}

QByteArray EscritorJet::decimal(bool negativo, const QList<quint32> &palavras)
{
    QByteArray bytes = U8(negativo ? 0x80 : 0);
    for (const quint32 palavra : palavras)
        bytes += U32(palavra);
    return bytes;
}

QByteArray EscritorJet::memoEmLinha(const QByteArray &bytes) const
{
    return U32(0x80000000 | bytes.size()) + Zeros(8) + bytes;
}

QByteArray EscritorJet::memoEmUmRegistro(const QByteArray &bytes)
{
    const quint32 ponteiro = Guardar(m_paginaDeLongos, kLval, bytes);
    return U32(0x40000000 | bytes.size()) + U32(ponteiro) + Zeros(4);
}

QByteArray EscritorJet::memoEmCadeia(const QByteArray &bytes, qsizetype pedaco)
{
    if (pedaco == 0)
        pedaco = (Jet3() ? 2036 : 4076) - 4;
    // The last piece first, so that each knows where the next one lies.
    quint32 seguinte = 0;
    for (qsizetype lugar = (bytes.size() - 1) / pedaco * pedaco; lugar >= 0; lugar -= pedaco)
        seguinte = Guardar(m_paginaDeLongos, kLval, U32(seguinte) + bytes.mid(lugar, pedaco));
    return U32(bytes.size()) + U32(seguinte) + QByteArray("\xDE\xAD\xBE\xEF", 4);
}

QByteArray EscritorJet::memo(const QByteArray &bytes)
{
    constexpr qsizetype kEmLinha = 64;
    if (bytes.size() <= kEmLinha)
        return memoEmLinha(bytes);
    return bytes.size() <= (Jet3() ? 2036 : 4076) ? memoEmUmRegistro(bytes) : memoEmCadeia(bytes);
}

EscritorJet::Tabela EscritorJet::Receitas() const
{
    return {.nome = "Receitas",
            .colunas = {{.nome = "id_receitas", .tipo = Longo, .fixa = true},
                        {.nome = "Nome", .tamanho = 160},
                        {.nome = "Data", .tipo = DataHora, .fixa = true},
                        {.nome = "Classificacao", .tamanho = 60},
                        {.nome = "Modo", .tipo = Memo},
                        {.nome = "Tipo", .tipo = Inteiro, .fixa = true},
                        {.nome = "Origem", .tamanho = 100},
                        {.nome = "Porcoes", .tipo = Inteiro, .fixa = true},
                        {.nome = "Preparo", .tamanho = 60},
                        {.nome = "Tipo_Calorias", .tamanho = 2},
                        {.nome = "Calorias", .tipo = Duplo, .fixa = true},
                        {.nome = "Observacao", .tipo = Memo},
                        {.nome = "Figura", .tamanho = 40}}};
}

EscritorJet::Tabela EscritorJet::Ingredientes() const
{
    return {.nome = "Ingredientes",
            .colunas = {{.nome = "id_ingredientes", .tipo = Longo, .fixa = true},
                        {.nome = "id_receitas", .tipo = Longo, .fixa = true},
                        {.nome = "Ingrediente", .tamanho = 80},
                        {.nome = "Quantidade", .tamanho = 40},
                        {.nome = "Unidade", .tamanho = 40}}};
}

qint64 EscritorJet::NovaPagina(quint32 dono)
{
    m_paginas += Pagina{.dono = dono};
    return m_paginas.size() - 1;
}

qint64 EscritorJet::Ocupado(const Pagina &pagina) const
{
    qint64 total = (Jet3() ? 10 : 14) + 2 * pagina.registros.size();
    for (const Registro &registro : pagina.registros)
        total += registro.bytes.size();
    return total;
}

/// Puts a record on the page, or on a new one of the same owner when it is full; returns the pointer to it.
quint32 EscritorJet::Guardar(qint64 &pagina, quint32 dono, const QByteArray &bytes, quint16 marcas)
{
    constexpr qsizetype kMaisRegistros = 255;
    if (pagina == 0 || m_paginas[pagina].registros.size() == kMaisRegistros ||
        Ocupado(m_paginas[pagina]) + 2 + bytes.size() > m_tamanho)
        pagina = NovaPagina(dono);
    m_paginas[pagina].registros += Registro{bytes, marcas};
    return static_cast<quint32>(pagina << 8 | (m_paginas[pagina].registros.size() - 1));
}

QByteArray EscritorJet::Cabecalho() const
{
    QByteArray claro = Zeros(m_tamanho);
    Por(claro, 0, QByteArray("\0\1\0\0Standard Jet DB\0", 20) + U32(versao));
    Por(claro, 0x18, U32(0x100) + U32(0x101) + U32(2) + U32(3) + U32(4) + U32(5));
    if (Jet3())
        Por(claro, 0x38, U16(1) + U16(0x0409));
    Por(claro, 0x3C, U16(paginaDeCodigo) + U32(chave));
    Por(claro, 0x42, senha);
    if (!Jet3()) {
        Por(claro, 0x6A, U16(0x261C) + U16(0x0409) + U16(0) + duplo(42329.94));
        Por(claro, 0x98, U32(0x654) + "4.0");
    }
    const qint64 mascarado = Jet3() ? 126 : 128;
    Por(claro, 0x18, Cifrar(QByteArray("\xC7\xDA\x39\x6B", 4), claro.mid(0x18, mascarado)));
    return claro;
}

QByteArray EscritorJet::BytesDaPagina(const Pagina &pagina) const
{
    if (!pagina.pronta.isEmpty())
        return pagina.pronta;
    QByteArray bytes = Zeros(m_tamanho);
    qint64 fim = m_tamanho;
    QByteArray fendas;
    for (const Registro &registro : pagina.registros) {
        fim -= registro.bytes.size();
        Por(bytes, fim, registro.bytes);
        fendas += U16(fim | registro.marcas);
    }
    Por(bytes, 0,
        U8(1) + U8(1) + U16(m_tamanho - Ocupado(pagina)) + U32(pagina.dono) +
            (Jet3() ? QByteArray() : Zeros(4)) + U16(pagina.registros.size()) + fendas);
    return bytes;
}

QByteArray EscritorJet::BytesDaLinha(const Tabela &tabela, const Linha &linha) const
{
    const int colunas = linha.colunas < 0 ? Topo(tabela) : linha.colunas;
    const int variaveis = Variaveis(tabela, colunas);
    QByteArray fixos;
    QList<QByteArray> valores(variaveis);
    QByteArray mascara = Zeros((colunas + 7) / 8);
    for (const Coluna &coluna : tabela.colunas) {
        if (coluna.numero >= colunas)
            continue;
        const bool nulo = !linha.valores.contains(coluna.nome);
        const QByteArray valor = linha.valores.value(coluna.nome);
        if (!nulo)
            mascara[coluna.numero / 8] =
                static_cast<char>(mascara[coluna.numero / 8] | 1 << coluna.numero % 8);
        if (coluna.tipo == SimNao)
            continue;
        if (coluna.fixa) {
            fixos.resize(std::max<qsizetype>(fixos.size(), coluna.lugar + TamanhoFixo(coluna)), '\0');
            Por(fixos, coluna.lugar, valor);
        } else {
            valores[coluna.variavel] = valor;
        }
    }
    QByteArray bytes = (Jet3() ? U8(colunas) : U16(colunas)) + fixos;
    if (Variaveis(tabela, Topo(tabela)) == 0)
        return bytes + mascara;
    QList<qint64> comecos;
    for (const QByteArray &valor : valores) {
        comecos += bytes.size();
        bytes += valor;
    }
    comecos += bytes.size();
    std::reverse(comecos.begin(), comecos.end());
    if (!Jet3()) {
        for (const qint64 comeco : comecos)
            bytes += U16(comeco);
        return bytes + U16(variaveis) + mascara;
    }
    for (const qint64 comeco : comecos)
        bytes += U8(static_cast<int>(comeco % 256));
    qint64 saltos = 0;
    while ((bytes.size() + saltos + 1 + mascara.size() - 1) / 256 > saltos)
        ++saltos;
    std::reverse(comecos.begin(), comecos.end());
    for (qint64 k = saltos - 1; k >= 0; --k) {
        const auto primeiro = std::find_if(comecos.begin(), comecos.end(),
                                           [k](qint64 comeco) { return comeco >= 256 * (k + 1); });
        bytes += U8(primeiro == comecos.end() ? 0xFF : static_cast<int>(primeiro - comecos.begin()));
    }
    return bytes + U8(variaveis) + mascara;
}

QByteArray EscritorJet::Definicao(const Tabela &tabela, int linhas, quint32 mapa, quint32 mapaComLugar) const
{
    QByteArray colunas;
    QByteArray nomes;
    for (const Coluna &coluna : tabela.colunas) {
        const int marcas = (coluna.fixa || coluna.tipo == SimNao ? 1 : 0) | 2;
        // Without that flag the place means nothing, and the other way round.
        const int lugar = coluna.fixa ? coluna.lugar : 0x7777;
        if (Jet3())
            colunas += U8(coluna.tipo) + U16(coluna.numero) + U16(coluna.variavel) + U16(coluna.numero) +
                       U16(0) + U16(0x0409) + U16(1252) + U8(marcas) +
                       U16(coluna.tipo == SimNao ? 0 : lugar) + U16(coluna.tamanho);
        else
            colunas += U8(coluna.tipo) + U32(0x659) + U16(coluna.numero) + U16(coluna.variavel) +
                       U16(coluna.numero) +
                       (coluna.tipo == Decimal ? U8(18) + U8(coluna.escala) : U16(0x0409)) + U16(0) +
                       U8(marcas) + U8(0) + U32(0xABABABAB) + U16(coluna.tipo == SimNao ? 0 : lugar) +
                       U16(coluna.tamanho);
        const QByteArray nome = texto(QString::fromUtf8(coluna.nome));
        nomes += (Jet3() ? U8(static_cast<int>(nome.size())) : U16(nome.size())) + nome;
    }
    QByteArray fluxo = U8(2) + U8(1) + (Jet3() ? QByteArray("VC") : U16(0)) + U32(0) + U32(0);
    if (!Jet3())
        fluxo += U32(0x659);
    fluxo += U32(linhas) + U32(tabela.contador);
    if (!Jet3())
        fluxo += U32(1) + Zeros(12);
    fluxo += U8(0x4E) + U16(Topo(tabela)) + U16(Variaveis(tabela, Topo(tabela))) +
             U16(tabela.colunas.size()) + U32(0) + U32(0) + U32(mapa) + U32(mapaComLugar) + colunas + nomes;
    for (const Coluna &coluna : tabela.colunas)
        if (coluna.tipo == Memo)
            fluxo += U16(coluna.numero) + U32(0) + U32(0);
    fluxo += U16(0xFFFF);
    Por(fluxo, 8, U32(fluxo.size()));
    return fluxo;
}

/// Spreads the stream over as many pages as it needs.
void EscritorJet::GravarDefinicao(qint64 pagina, const QByteArray &fluxo)
{
    QByteArray bytes = fluxo.left(m_tamanho);
    for (qint64 lugar = m_tamanho;; lugar += m_tamanho - 8) {
        const bool ultima = lugar >= fluxo.size();
        const qint64 seguinte = ultima ? 0 : NovaPagina(0);
        Por(bytes, 4, U32(seguinte));
        m_paginas[pagina].pronta = bytes.leftJustified(m_tamanho, '\0');
        if (ultima)
            return;
        bytes =
            U8(2) + U8(1) + (Jet3() ? QByteArray("VC") : U16(0)) + U32(0) + fluxo.mid(lugar, m_tamanho - 8);
        pagina = seguinte;
    }
}

/// Returns how many of the rows are rows; `paginas` becomes the table's map.
int EscritorJet::GravarLinhas(const Tabela &tabela, qint64 definicao, QList<qint64> &paginas)
{
    constexpr quint16 kPonteiro = 0x4000;
    constexpr quint16 kSoPorPonteiro = 0x8000;
    const auto dono = static_cast<quint32>(definicao);
    qint64 pagina = 0;
    qint64 outra = 0; // where moved rows go
    int linhas = 0;
    const auto guardar = [&](qint64 &onde, const QByteArray &bytes, quint16 marcas) {
        const quint32 ponteiro = Guardar(onde, dono, bytes, marcas);
        if ((paginas.isEmpty() || paginas.last() != onde) && !paginas.contains(onde))
            paginas += onde;
        return ponteiro;
    };
    for (const Linha &linha : tabela.linhas) {
        const QByteArray bytes = BytesDaLinha(tabela, linha);
        switch (linha.estado) {
        case Estado::Viva:
            guardar(pagina, bytes, 0);
            ++linhas;
            break;
        case Estado::Apagada:
            guardar(pagina, bytes, kPonteiro | kSoPorPonteiro);
            break;
        case Estado::ApagadaVazia:
            guardar(pagina, {}, kPonteiro | kSoPorPonteiro);
            break;
        case Estado::Sobra:
            guardar(pagina, bytes, kSoPorPonteiro);
            break;
        case Estado::MovidaDeNovo:
        case Estado::Movida: {
            if (linha.estado == Estado::MovidaDeNovo)
                guardar(outra, bytes, kSoPorPonteiro);
            const quint32 destino = guardar(outra, bytes, kSoPorPonteiro);
            // Jet 4 leaves the row's old bytes behind the pointer.
            guardar(pagina, U32(destino) + (Jet3() ? QByteArray() : bytes.mid(4)), kPonteiro);
            ++linhas;
            break;
        }
        }
    }
    return linhas;
}

/// Begins at the first page that counts, as the engine may.
QByteArray EscritorJet::MapaEmLinha(const QList<qint64> &paginas) const
{
    const qint64 primeira = paginas.isEmpty() ? 0 : *std::min_element(paginas.begin(), paginas.end()) / 8 * 8;
    QByteArray bits = Zeros(Jet3() ? 128 : 64);
    for (const qint64 pagina : paginas) {
        const qint64 bit = pagina - primeira;
        Q_ASSERT(bit / 8 < bits.size());
        bits[bit / 8] = static_cast<char>(bits[bit / 8] | 1 << bit % 8);
    }
    return U8(0) + U32(primeira) + bits;
}

quint32 EscritorJet::GravarMapa(const QList<qint64> &paginas, bool porReferencia)
{
    const qint64 maior = paginas.isEmpty() ? 0 : *std::max_element(paginas.begin(), paginas.end());
    if (!porReferencia && maior < (Jet3() ? 1024 : 512))
        return Guardar(m_paginaDeMapas, 0, MapaEmLinha(paginas));
    const qint64 porPagina = (m_tamanho - 4) * 8;
    QByteArray mapa = U8(1);
    for (qint64 i = 0; i <= maior / porPagina; ++i) {
        QByteArray bits = Zeros(m_tamanho);
        Por(bits, 0, U8(5) + U8(1) + U16(0));
        bool algum = false;
        for (const qint64 pagina : paginas) {
            if (pagina / porPagina != i)
                continue;
            const qint64 bit = pagina % porPagina;
            bits[4 + bit / 8] = static_cast<char>(bits[4 + bit / 8] | 1 << bit % 8);
            algum = true;
        }
        qint64 referencia = 0;
        if (algum) {
            referencia = NovaPagina(0);
            m_paginas[referencia].pronta = bits;
        }
        mapa += U32(referencia);
    }
    return Guardar(m_paginaDeMapas, 0, mapa.leftJustified(Jet3() ? 133 : 69, '\0'));
}

void EscritorJet::GravarTabela(Tabela tabela, qint64 definicao, int numero)
{
    Completar(tabela);
    QList<qint64> paginas;
    const int linhas = GravarLinhas(tabela, definicao, paginas);
    const quint32 mapa = GravarMapa(paginas, tabela.mapaPorReferencia);
    const quint32 mapaComLugar = GravarMapa({}, false);
    GravarDefinicao(definicao, Definicao(tabela, tabela.linhasDitas < 0 ? linhas : tabela.linhasDitas, mapa,
                                         mapaComLugar));
    if (numero >= 0)
        m_paginasDasTabelas[numero] = paginas;
}

QByteArray EscritorJet::Gerar(const QList<Tabela> &tabelas)
{
    Tabela catalogo{.nome = "MSysObjects",
                    .colunas = {{.nome = "Id", .tipo = Longo, .fixa = true},
                                {.nome = "Name", .tamanho = 510},
                                {.nome = "Type", .tipo = Inteiro, .fixa = true},
                                {.nome = "Flags", .tipo = Longo, .fixa = true}}};
    const auto anotar = [&](const Tabela &tabela, qint64 definicao) {
        catalogo.Acrescentar({{"Id", U32(definicao)},
                              {"Name", texto(QString::fromUtf8(tabela.nome))},
                              {"Type", U16(tabela.tipoNoCatalogo)},
                              {"Flags", U32(tabela.marcasNoCatalogo)}});
    };
    m_definicoes.clear();
    m_paginasDasTabelas = QList<QList<qint64>>(tabelas.size());
    for (const Tabela &tabela : soNoCatalogo)
        anotar(tabela, 0);
    for (const Tabela &tabela : tabelas) {
        m_definicoes += NovaPagina(0);
        anotar(tabela, m_definicoes.last());
    }
    for (int i = 0; i < tabelas.size(); ++i)
        GravarTabela(tabelas[i], m_definicoes[i], i);
    constexpr qint64 kCatalogo = 2;
    GravarTabela(catalogo, kCatalogo, -1);

    // Page 1: which pages are free. None is, but for those behind the file's end.
    const qint64 alcance = Jet3() ? 1024 : 512;
    QList<qint64> livres;
    for (qint64 pagina = m_paginas.size(); pagina < (m_paginas.size() / 8 * 8) + alcance; ++pagina)
        livres += pagina;
    m_paginas[1] = Pagina{.dono = 1, .registros = {{MapaEmLinha(livres), 0}, {MapaEmLinha({}), 0}}};

    QByteArray arquivo = Cabecalho();
    arquivo.reserve(m_paginas.size() * m_tamanho);
    for (qint64 i = 1; i < m_paginas.size(); ++i) {
        const QByteArray bytes = BytesDaPagina(m_paginas[i]);
        arquivo += chave == 0 ? bytes : Cifrar(U32(chave ^ static_cast<quint32>(i)), bytes);
    }
    return arquivo;
}
