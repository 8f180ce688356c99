#include "store/RecordSet.h"

#include "base/Numero.h"
#include "store/DadosRecordSet.h"
#include "store/ErroBanco.h"

#include <algorithm>
#include <cstring>

namespace
{
// Small first, so that a query of one row stays cheap; then large, so that a whole book needs few blocks.
constexpr std::size_t kPrimeiroBloco = 4 * 1024;
constexpr std::size_t kBloco = 1024 * 1024;
} // namespace

namespace
{
using Celula = RecordSet::Dados::Celula;

enum : Celula { kTexto = 1, kInteiro = 2, kReal = 3, kMarcas = 3 };
// A whole number that does not fit beside its mark lies in eight bytes of its own, which begin with this.
constexpr std::size_t kAlinhamento = 8;

std::size_t Misturar(std::string_view texto)
{
    std::size_t h = texto.size();
    for (const char c : texto)
        h = h * 31 + static_cast<unsigned char>(c);
    return h;
}

const char *Lugar(Celula celula)
{
    return reinterpret_cast<const char *>(celula & ~kMarcas);
}
} // namespace

char *RecordSet::Dados::Reservar(std::size_t bytes)
{
    bytes = (bytes + kAlinhamento - 1) / kAlinhamento * kAlinhamento;
    if (bytes > m_resto) {
        m_resto = std::max(bytes, m_blocos.empty() ? kPrimeiroBloco : kBloco);
        m_blocos.push_back(std::make_unique_for_overwrite<char[]>(m_resto));
        m_livre = m_blocos.back().get();
    }
    char *lugar = m_livre;
    m_livre += bytes;
    m_resto -= bytes;
    return lugar;
}

void RecordSet::Dados::Acrescentar(Celula celula)
{
    if (m_campo == 0 && linhas % static_cast<int>(kLinhasPorBloco) == 0) {
        m_celulas.emplace_back();
        if (linhas > 0) // the first block grows: most record sets are small
            m_celulas.back().reserve(kLinhasPorBloco * static_cast<std::size_t>(nomes.size()));
    }
    m_celulas.back().push_back(celula);
    m_campo = m_campo + 1 == nomes.size() ? 0 : m_campo + 1;
}

void RecordSet::Dados::AcrescentarNulo()
{
    Acrescentar(0);
}

Celula RecordSet::Dados::GuardarOito(quint64 bits, Celula marca)
{
    char *lugar = Reservar(2 * sizeof bits);
    std::memcpy(lugar, &marca, sizeof marca);
    std::memcpy(lugar + sizeof marca, &bits, sizeof bits);
    return reinterpret_cast<Celula>(lugar) | kReal;
}

void RecordSet::Dados::AcrescentarInteiro(qint64 valor)
{
    const Celula celula = static_cast<Celula>(valor) << 2 | kInteiro;
    const bool cabe = static_cast<qint64>(celula) >> 2 == valor;
    Acrescentar(cabe ? celula : GuardarOito(static_cast<quint64>(valor), kInteiro));
}

void RecordSet::Dados::AcrescentarReal(double valor)
{
    quint64 bits = 0;
    std::memcpy(&bits, &valor, sizeof bits);
    Acrescentar(GuardarOito(bits, kReal));
}

Celula RecordSet::Dados::GuardarTexto(std::string_view utf8)
{
    const auto tamanho = static_cast<quint32>(utf8.size());
    char *lugar = Reservar(sizeof tamanho + utf8.size());
    std::memcpy(lugar, &tamanho, sizeof tamanho);
    if (!utf8.empty())
        std::memcpy(lugar + sizeof tamanho, utf8.data(), utf8.size());
    return reinterpret_cast<Celula>(lugar) | kTexto;
}

void RecordSet::Dados::AcrescentarTexto(std::string_view utf8)
{
    constexpr std::size_t kMaiorLembrado = 64;
    constexpr int kPaciencia = 512;
    if (linhas < kLinhasAntesDeLembrar || utf8.size() > kMaiorLembrado) {
        Acrescentar(GuardarTexto(utf8));
        return;
    }
    m_lembrados.resize(static_cast<std::size_t>(nomes.size()));
    Lembrados &lembrados = m_lembrados[static_cast<std::size_t>(m_campo)];
    if (lembrados.perdidos > kPaciencia + 2 * lembrados.achados) { // a column of names
        Acrescentar(GuardarTexto(utf8));
        return;
    }
    Celula &lembrado = lembrados.textos[Misturar(utf8) % lembrados.textos.size()];
    if (lembrado != 0 && Texto(lembrado) == utf8) {
        ++lembrados.achados;
    } else {
        ++lembrados.perdidos;
        lembrado = GuardarTexto(utf8);
    }
    Acrescentar(lembrado);
}

RecordSet::Dados::Tipo RecordSet::Dados::TipoDe(Celula celula)
{
    switch (celula & kMarcas) {
    case kTexto:
        return Tipo::Texto;
    case kInteiro:
        return Tipo::Inteiro;
    case kReal: {
        Celula marca = 0;
        std::memcpy(&marca, Lugar(celula), sizeof marca);
        return marca == kReal ? Tipo::Real : Tipo::Inteiro;
    }
    default:
        return Tipo::Nulo;
    }
}

qint64 RecordSet::Dados::Inteiro(Celula celula)
{
    if ((celula & kMarcas) == kInteiro)
        return static_cast<qint64>(celula) >> 2;
    qint64 valor = 0;
    std::memcpy(&valor, Lugar(celula) + sizeof(Celula), sizeof valor);
    return valor;
}

double RecordSet::Dados::Real(Celula celula)
{
    double valor = 0;
    std::memcpy(&valor, Lugar(celula) + sizeof(Celula), sizeof valor);
    return valor;
}

std::string_view RecordSet::Dados::Texto(Celula celula)
{
    quint32 tamanho = 0;
    std::memcpy(&tamanho, Lugar(celula), sizeof tamanho);
    return {Lugar(celula) + sizeof tamanho, tamanho};
}

int RecordSet::RecordCount() const
{
    return m_ordem ? static_cast<int>(m_ordem->size()) : m_dados ? m_dados->linhas : 0;
}

int RecordSet::FieldCount() const
{
    return m_dados ? static_cast<int>(m_dados->nomes.size()) : 0;
}

QStringList RecordSet::FieldNames() const
{
    return m_dados ? m_dados->nomes : QStringList();
}

int RecordSet::Campo(QStringView nome) const
{
    for (int i = 0; i < FieldCount(); ++i)
        if (nome.compare(m_dados->nomes[i], Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

int RecordSet::Guardada(int linha, int campo) const
{
    if (linha < 0 || linha >= RecordCount())
        throw ErroBanco("Não há registro atual.");
    if (campo < 0 || campo >= FieldCount())
        throw ErroBanco("Campo não encontrado no resultado da consulta.");
    return m_ordem ? static_cast<int>((*m_ordem)[static_cast<std::size_t>(linha)]) : linha;
}

QVariant RecordSet::ValorEm(int linha, int campo) const
{
    const Dados::Celula celula = m_dados->Em(Guardada(linha, campo), campo);
    switch (Dados::TipoDe(celula)) {
    case Dados::Tipo::Nulo:
        break;
    case Dados::Tipo::Inteiro:
        return Dados::Inteiro(celula);
    case Dados::Tipo::Real:
        return Dados::Real(celula);
    case Dados::Tipo::Texto:
        return QString::fromUtf8(Dados::Texto(celula));
    }
    return {};
}

std::string_view RecordSet::Utf8Em(int linha, int campo) const
{
    const Dados::Celula celula = m_dados->Em(Guardada(linha, campo), campo);
    return Dados::TipoDe(celula) == Dados::Tipo::Texto ? Dados::Texto(celula) : std::string_view();
}

bool RecordSet::NuloEm(int linha, int campo) const
{
    return m_dados->Em(Guardada(linha, campo), campo) == 0;
}

quint64 RecordSet::MarcaEm(int linha, int campo) const
{
    return m_dados->Em(Guardada(linha, campo), campo);
}

qint64 RecordSet::InteiroEm(int linha, int campo) const
{
    const Dados::Celula celula = m_dados->Em(Guardada(linha, campo), campo);
    return Dados::TipoDe(celula) == Dados::Tipo::Inteiro ? Dados::Inteiro(celula) : 0;
}

QVariant RecordSet::Valor(int campo) const
{
    return ValorEm(m_linha, campo);
}

QVariant RecordSet::Valor(QStringView nome) const
{
    const int campo = Campo(nome);
    if (campo < 0)
        throw ErroBanco(QString("Campo não encontrado no resultado da consulta: %1").arg(nome));
    return ValorEm(m_linha, campo);
}

bool RecordSet::Nulo(int campo) const
{
    return !Valor(campo).isValid();
}

QString RecordSet::Texto(QStringView nome) const
{
    return TextoDoValor(Valor(nome));
}

QString RecordSet::Texto(int campo) const
{
    return TextoDoValor(Valor(campo));
}

QString RecordSet::TextoEm(int linha, int campo) const
{
    const Dados::Celula celula = m_dados ? m_dados->Em(Guardada(linha, campo), campo) : 0;
    if (Dados::TipoDe(celula) == Dados::Tipo::Texto)
        return QString::fromUtf8(Dados::Texto(celula));
    return TextoDoValor(ValorEm(linha, campo));
}
