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

void RecordSet::Dados::AcrescentarNulo()
{
    Celula celula;
    celula.inteiro = 0;
    celula.tamanho = 0;
    celula.tipo = Tipo::Nulo;
    celulas.push_back(celula);
}

void RecordSet::Dados::AcrescentarInteiro(qint64 valor)
{
    Celula celula;
    celula.inteiro = valor;
    celula.tamanho = 0;
    celula.tipo = Tipo::Inteiro;
    celulas.push_back(celula);
}

void RecordSet::Dados::AcrescentarReal(double valor)
{
    Celula celula;
    celula.real = valor;
    celula.tamanho = 0;
    celula.tipo = Tipo::Real;
    celulas.push_back(celula);
}

void RecordSet::Dados::AcrescentarTexto(std::string_view utf8)
{
    if (utf8.size() > m_resto) {
        m_resto = std::max(utf8.size(), m_blocos.empty() ? kPrimeiroBloco : kBloco);
        m_blocos.push_back(std::make_unique_for_overwrite<char[]>(m_resto));
        m_livre = m_blocos.back().get();
    }
    Celula celula;
    celula.texto = m_livre;
    celula.tamanho = static_cast<quint32>(utf8.size());
    celula.tipo = Tipo::Texto;
    if (!utf8.empty())
        std::memcpy(m_livre, utf8.data(), utf8.size());
    m_livre += utf8.size();
    m_resto -= utf8.size();
    celulas.push_back(celula);
}

int RecordSet::RecordCount() const
{
    return m_dados ? m_dados->linhas : 0;
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

QVariant RecordSet::ValorEm(int linha, int campo) const
{
    if (linha < 0 || linha >= RecordCount())
        throw ErroBanco("Não há registro atual.");
    if (campo < 0 || campo >= FieldCount())
        throw ErroBanco("Campo não encontrado no resultado da consulta.");
    const std::size_t posicao = static_cast<std::size_t>(linha) * static_cast<std::size_t>(FieldCount());
    const Dados::Celula &celula = m_dados->celulas[posicao + static_cast<std::size_t>(campo)];
    switch (celula.tipo) {
    case Dados::Tipo::Nulo:
        break;
    case Dados::Tipo::Inteiro:
        return celula.inteiro;
    case Dados::Tipo::Real:
        return celula.real;
    case Dados::Tipo::Texto:
        return QString::fromUtf8(celula.texto, static_cast<qsizetype>(celula.tamanho));
    }
    return {};
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
    return TextoDoValor(ValorEm(linha, campo));
}
