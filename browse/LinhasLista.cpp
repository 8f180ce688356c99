#include "browse/LinhasLista.h"

#include "base/Numero.h"
#include "base/Ordem.h"

#include <algorithm>
#include <numeric>

LinhasLista::LinhasLista(RecordSet receitas, qint64 lngLimiteCalorias)
    : m_receitas(std::move(receitas))
    , m_limite(lngLimiteCalorias)
{
    m_campos.numero = m_receitas.Campo(u"id_receitas");
    m_campos.nome = m_receitas.Campo(u"Nome");
    m_campos.figura = m_receitas.Campo(u"Figura");
    m_campos.classificacao = m_receitas.Campo(u"Classificacao");
    m_campos.origem = m_receitas.Campo(u"Origem");
    m_campos.preparo = m_receitas.Campo(u"Preparo");
    m_campos.tipo = m_receitas.Campo(u"Tipo");
    m_campos.tipoCalorias = m_receitas.Campo(u"Tipo_Calorias");
    m_campos.calorias = m_receitas.Campo(u"Calorias");
    m_campos.porcoes = m_receitas.Campo(u"Porcoes");
    m_linhas.reserve(static_cast<std::size_t>(m_receitas.RecordCount()));
}

QStringList LinhasLista::CamposLidos()
{
    return {"id_receitas", "Nome", "Figura",        "Classificacao", "Origem",
            "Preparo",     "Tipo", "Tipo_Calorias", "Calorias",      "Porcoes"};
}

bool LinhasLista::Tomar(int quantos)
{
    const int fim = std::min(m_receitas.RecordCount(), m_proximo + quantos);
    for (; m_proximo < fim; ++m_proximo) {
        if (m_limite == 0 || !AcimaDoLimite(m_proximo))
            m_linhas.push_back(m_proximo);
    }
    return m_proximo < m_receitas.RecordCount();
}

bool LinhasLista::PorPorcao(int registro) const
{
    return m_receitas.TextoEm(registro, m_campos.tipoCalorias) == QLatin1String("P");
}

namespace
{
// Calories of the whole recipe; invalid when one of the two factors is missing.
QVariant Total(const RecordSet &receitas, int registro, int calorias, int porcoes)
{
    const QVariant porPorcao = receitas.ValorEm(registro, calorias);
    const QVariant quantas = receitas.ValorEm(registro, porcoes);
    if (!porPorcao.isValid() || !quantas.isValid())
        return {};
    return Int(porPorcao.toDouble() * quantas.toDouble());
}
} // namespace

bool LinhasLista::AcimaDoLimite(int registro) const
{
    if (!PorPorcao(registro))
        return false; // the query has compared it already
    const QVariant total = Total(m_receitas, registro, m_campos.calorias, m_campos.porcoes);
    return total.isValid() && static_cast<double>(m_limite) < total.toDouble();
}

qint64 LinhasLista::Receita(int linha) const
{
    return m_receitas.ValorEm(m_linhas.at(static_cast<std::size_t>(linha)), m_campos.numero).toLongLong();
}

QString LinhasLista::Chave(int linha) const
{
    return "C" + QString::number(Receita(linha));
}

QString LinhasLista::Texto(int linha, Coluna coluna) const
{
    const int registro = m_linhas.at(static_cast<std::size_t>(linha));
    switch (coluna) {
    case Nome:
        return m_receitas.TextoEm(registro, m_campos.nome);
    case Tipo: // headed so, though it shows the classification
        return m_receitas.TextoEm(registro, m_campos.classificacao);
    case Origem:
        return m_receitas.TextoEm(registro, m_campos.origem);
    case Preparo:
        return m_receitas.TextoEm(registro, m_campos.preparo);
    case Calorias:
        if (PorPorcao(registro))
            return TextoDoValor(Total(m_receitas, registro, m_campos.calorias, m_campos.porcoes));
        return m_receitas.TextoEm(registro, m_campos.calorias);
    case kColunas:
        break;
    }
    return {};
}

QString LinhasLista::Tag(int linha) const
{
    return m_receitas.TextoEm(m_linhas.at(static_cast<std::size_t>(linha)), m_campos.tipo);
}

bool LinhasLista::TemFigura(int linha) const
{
    return !m_receitas.TextoEm(m_linhas.at(static_cast<std::size_t>(linha)), m_campos.figura).isEmpty();
}

std::vector<int> LinhasLista::Ordenar(Coluna coluna)
{
    // All keys stand in one text, made once: comparing must not make strings.
    QString textos;
    std::vector<qsizetype> fins(m_linhas.size() + 1, 0);
    for (int linha = 0; linha < Quantas(); ++linha) {
        textos += Texto(linha, coluna);
        fins[static_cast<std::size_t>(linha) + 1] = textos.size();
    }
    const QStringView todos(textos);
    const auto chave = [&todos, &fins](int linha) {
        const auto i = static_cast<std::size_t>(linha);
        return todos.sliced(fins[i], fins[i + 1] - fins[i]);
    };

    std::vector<int> antigos(m_linhas.size());
    std::iota(antigos.begin(), antigos.end(), 0);
    std::stable_sort(antigos.begin(), antigos.end(),
                     [&chave](int a, int b) { return Ordem::Comparar(chave(a), chave(b)) < 0; });

    std::vector<int> ordenadas;
    ordenadas.reserve(m_linhas.size());
    for (const int antigo : antigos)
        ordenadas.push_back(m_linhas[static_cast<std::size_t>(antigo)]);
    m_linhas = std::move(ordenadas);
    return antigos;
}

int LinhasLista::Linha(qint64 lngReceita) const
{
    for (int linha = 0; linha < Quantas(); ++linha) {
        if (Receita(linha) == lngReceita)
            return linha;
    }
    return -1;
}

namespace
{
// The letter alone, small: "Ã" and "a" are the same.
QChar SemAcento(QChar letra)
{
    const QChar pequena = letra.toLower();
    if (pequena.unicode() < 0x80 || pequena.decompositionTag() != QChar::Canonical)
        return pequena;
    return pequena.decomposition().at(0);
}

bool ComecaSemAcento(const QString &texto, const QString &inicio)
{
    return texto.size() >= inicio.size() &&
           std::equal(inicio.begin(), inicio.end(), texto.begin(),
                      [](QChar a, QChar b) { return SemAcento(a) == SemAcento(b); });
}
} // namespace

int LinhasLista::ProcurarNome(const QString &inicio, int aPartirDe) const
{
    const auto procurar = [this, aPartirDe](auto serve) {
        for (int i = 0; i < Quantas(); ++i) {
            const int linha = (aPartirDe + i) % Quantas();
            if (serve(Texto(linha, Nome)))
                return linha;
        }
        return -1;
    };
    const int linha =
        procurar([&](const QString &nome) { return nome.startsWith(inicio, Qt::CaseInsensitive); });
    return linha >= 0 ? linha : procurar([&](const QString &nome) { return ComecaSemAcento(nome, inicio); });
}
