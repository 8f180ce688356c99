#include "store/access/Valores.h"

#include "store/access/ErroAccess.h"

#include <QDate>
#include <QTime>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_set>

using namespace Access;

namespace
{
/// The nearest double of the shortest text that means this single: 98.3 and not 98.30000305.
double DobroDoSimples(float simples)
{
    std::array<char, 32> texto{};
    const auto escrito = std::to_chars(texto.data(), texto.data() + texto.size(), simples);
    double valor = 0;
    std::from_chars(texto.data(), escrito.ptr, valor);
    return valor;
}

[[noreturn]] void TipoErrado(const Coluna &coluna)
{
    throw ErroAccess(QString("A coluna %1 é de um tipo que não se espera (%2).")
                   .arg(coluna.nome)
                   .arg(static_cast<int>(coluna.tipo)));
}
} // namespace

QString Access::DataDoNumero(double valor)
{
    constexpr double kPrimeira = -657434; // 0100-01-01
    constexpr double kAlem = 2958466;     // 10000-01-01
    constexpr int kSegundosDoDia = 24 * 60 * 60;
    if (!(valor >= kPrimeira && valor < kAlem)) // NaN too
        Danificado("uma data que não existe");
    const double dia = std::trunc(valor);
    QDate data = QDate(1899, 12, 30).addDays(static_cast<qint64>(dia));
    int segundos = static_cast<int>(std::lround(std::abs(valor - dia) * kSegundosDoDia));
    if (segundos == kSegundosDoDia) {
        // 23:59:59.6 is the next day's midnight, but for the very last day.
        if (data.year() == 9999 && data.dayOfYear() == data.daysInYear()) {
            --segundos;
        } else {
            data = data.addDays(1);
            segundos = 0;
        }
    }
    QString texto = data.toString("yyyy-MM-dd");
    if (segundos != 0)
        texto += QTime(0, 0).addSecs(segundos).toString(" HH:mm:ss");
    return texto;
}

double Access::NumeroDecimal(const Trecho &bytes, int escala)
{
    constexpr int kMaiorEscala = 28;
    constexpr quint8 kNegativo = 0x80;
    constexpr quint64 kBilhao = 1000000000;
    if (escala > kMaiorEscala)
        Danificado("um número com casas demais");
    std::array<quint64, 4> palavras = {bytes.U32(1), bytes.U32(5), bytes.U32(9), bytes.U32(13)};
    // Nine decimal digits at a time, lowest first; the text is then read as one number, rounded once.
    QByteArray digitos;
    while (palavras[0] | palavras[1] | palavras[2] | palavras[3]) {
        quint64 resto = 0;
        for (quint64 &palavra : palavras) {
            const quint64 parte = resto << 32 | palavra;
            palavra = parte / kBilhao;
            resto = parte % kBilhao;
        }
        digitos.prepend(QByteArray::number(resto).rightJustified(9, '0'));
    }
    if (digitos.isEmpty())
        return 0;
    const double numero = (digitos + "e-" + QByteArray::number(escala)).toDouble();
    return bytes.U8(0) == kNegativo ? -numero : numero;
}

std::optional<double> LeitorDeValores::Numero(const Linha &linha, const Coluna &coluna) const
{
    const std::optional<Trecho> valor = linha.Valor(coluna);
    if (!valor)
        return {};
    double numero = 0;
    switch (coluna.tipo) {
    case TipoColuna::Byte:
        numero = valor->U8(0);
        break;
    case TipoColuna::Inteiro:
        numero = valor->I16(0);
        break;
    case TipoColuna::Longo:
        numero = valor->I32(0);
        break;
    case TipoColuna::Moeda:
        numero = static_cast<double>(valor->I64(0)) / 10000;
        break;
    case TipoColuna::Simples:
        numero = valor->F32(0);
        if (std::isfinite(numero))
            numero = DobroDoSimples(valor->F32(0));
        break;
    case TipoColuna::Duplo:
        numero = valor->F64(0);
        break;
    case TipoColuna::Decimal:
        numero = NumeroDecimal(*valor, coluna.escala);
        break;
    default:
        TipoErrado(coluna);
    }
    if (!std::isfinite(numero))
        Danificado("um número que não existe");
    return numero;
}

std::optional<qint32> LeitorDeValores::Inteiro(const Linha &linha, const Coluna &coluna) const
{
    const std::optional<double> numero = Numero(linha, coluna);
    if (!numero)
        return {};
    if (*numero != std::trunc(*numero) || *numero < std::numeric_limits<qint32>::min() ||
        *numero > std::numeric_limits<qint32>::max())
        Danificado("uma chave que não é um número inteiro");
    return static_cast<qint32>(*numero);
}

std::optional<QString> LeitorDeValores::Data(const Linha &linha, const Coluna &coluna) const
{
    if (coluna.tipo != TipoColuna::DataHora)
        TipoErrado(coluna);
    const std::optional<Trecho> valor = linha.Valor(coluna);
    if (!valor)
        return {};
    return DataDoNumero(valor->F64(0));
}

std::optional<QString> LeitorDeValores::Texto(const Linha &linha, const Coluna &coluna)
{
    if (coluna.tipo != TipoColuna::Texto && coluna.tipo != TipoColuna::Memo)
        TipoErrado(coluna);
    const std::optional<Trecho> valor = linha.Valor(coluna);
    if (!valor)
        return {};
    if (coluna.tipo == TipoColuna::Memo) {
        const QByteArray bytes = Longo(*valor);
        return Decodificar(Trecho{bytes});
    }
    QString texto = Decodificar(*valor);
    // A text of fixed width is filled up with blanks.
    while (coluna.fixa && texto.size() > 1 && texto.endsWith(' '))
        texto.chop(1);
    return texto;
}

QString LeitorDeValores::Decodificar(const Trecho &bytes) const
{
    return m_arquivo.formato().jet == 3 ? TextoDaPagina1252(bytes) : TextoJet4(bytes);
}

/// Records are never shared, so honest long values are no larger than their file.
void LeitorDeValores::Gastar(qint64 bytes)
{
    m_longos += bytes;
    if (m_longos > m_arquivo.Tamanho())
        Danificado("um texto longo maior do que o arquivo");
}

/// One record of a long value, which lives until the next is asked for.
Trecho LeitorDeValores::Pedaco(quint32 ponteiro)
{
    const auto [numero, linha] = Ponteiro::De(ponteiro);
    if (!m_pagina || m_numeroDaPagina != numero) {
        m_pagina.emplace(m_arquivo, numero);
        m_numeroDaPagina = numero;
    }
    if (m_pagina->Dono() != PaginaDeDados::kDonoValorLongo ||
        m_pagina->EstadoDe(linha) != PaginaDeDados::Estado::Vivo)
        Danificado("falta um pedaço de um texto longo");
    const Trecho pedaco = m_pagina->Registro(linha);
    Gastar(pedaco.Tamanho());
    return pedaco;
}

// In the row stand 12 bytes: length and kind, where the bytes are, and four bytes of no use. The bytes follow
// at once, or are one record elsewhere, or a chain of records that begin with the pointer to the next.
QByteArray LeitorDeValores::Longo(const Trecho &cabecalho)
{
    constexpr quint32 kTamanho = 0x3FFFFFFF;
    constexpr qint64 kMaior = qint64(64) << 20;
    constexpr qint64 kDados = 12;
    enum : quint32 { kCadeia = 0, kUmRegistro = 1, kEmLinha = 2 };

    const qint64 tamanho = cabecalho.U32(0) & kTamanho;
    const quint32 tipo = cabecalho.U32(0) >> 30;
    quint32 ponteiro = cabecalho.U32(4);
    const Trecho emLinha = cabecalho.Desde(kDados);
    if (tamanho > kMaior)
        Danificado("um texto longo maior do que pode ser");

    QByteArray bytes;
    switch (tipo) {
    case kEmLinha:
        Gastar(tamanho);
        return emLinha.Parte(0, tamanho).Bytes().toByteArray();
    case kUmRegistro:
        bytes = Pedaco(ponteiro).Bytes().toByteArray();
        break;
    case kCadeia: {
        std::unordered_set<quint32> vistos;
        while (ponteiro != 0 && bytes.size() <= tamanho) {
            if (!vistos.insert(ponteiro).second)
                Danificado("um texto longo não tem fim");
            const Trecho pedaco = Pedaco(ponteiro);
            ponteiro = pedaco.U32(0);
            bytes += pedaco.Desde(4).Bytes();
        }
        break;
    }
    default:
        Danificado("um texto longo de tipo desconhecido");
    }
    if (bytes.size() != tamanho)
        Danificado("um texto longo com outro tamanho");
    return bytes;
}
