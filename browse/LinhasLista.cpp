#include "browse/LinhasLista.h"

#include "base/EventosPendentes.h"
#include "base/Numero.h"
#include "base/Ordem.h"

#include <QElapsedTimer>

#include <algorithm>
#include <numeric>
#include <string>
#include <unordered_map>

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

bool LinhasLista::Mostra(const RecordSet &receitas, qint64 lngLimiteCalorias) const
{
    const int quantas = receitas.RecordCount();
    if (quantas == 0 || quantas != m_receitas.RecordCount() || m_proximo != quantas || m_removeu ||
        m_limite != lngLimiteCalorias || m_receitas.Reordenado() != receitas.Reordenado())
        return false;
    // A name's mark is its place in the storage, which two living record sets only have in common if it is
    // one.
    const auto mesma = [&](int linha) {
        return m_receitas.MarcaEm(linha, m_campos.nome) == receitas.MarcaEm(linha, m_campos.nome);
    };
    return mesma(0) && mesma(quantas - 1);
}

bool LinhasLista::PorPorcao(int registro) const
{
    return m_receitas.Utf8Em(registro, m_campos.tipoCalorias) == "P";
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
    return m_receitas.InteiroEm(m_linhas.at(static_cast<std::size_t>(linha)), m_campos.numero);
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
    return !m_receitas.Utf8Em(m_linhas.at(static_cast<std::size_t>(linha)), m_campos.figura).empty();
}

namespace
{
/// Lets the window paint every few milliseconds of a long loop.
class Respiro
{
public:
    Respiro() { m_relogio.start(); }
    void operator()()
    {
        constexpr int kVezes = 1024;
        constexpr int kMs = 8;
        if (++m_vezes % kVezes != 0 || !m_relogio.hasExpired(kMs))
            return;
        MostrarMudancas();
        m_relogio.start();
    }

private:
    QElapsedTimer m_relogio;
    int m_vezes = 0;
};
} // namespace

/// The names come in their order: a recipe's place among them is its record, but for equal ones. Empty when
/// they do not come so.
std::vector<int> LinhasLista::PostosDoNome() const
{
    std::vector<int> postos(static_cast<std::size_t>(m_receitas.RecordCount()), 0);
    Respiro respirar;
    for (std::size_t i = 1; i < postos.size(); ++i) {
        const auto registro = static_cast<int>(i);
        const int c = Ordem::Comparar(m_receitas.Utf8Em(registro - 1, m_campos.nome),
                                      m_receitas.Utf8Em(registro, m_campos.nome));
        if (c > 0)
            return {};
        postos[i] = postos[i - 1] + (c < 0 ? 1 : 0);
        respirar();
    }
    return postos;
}

/// The place of every record by a column: equal texts have the same, a later text a higher one.
std::vector<int> LinhasLista::Postos(Coluna coluna) const
{
    const int campos[kColunas] = {m_campos.nome, m_campos.classificacao, m_campos.origem, m_campos.preparo,
                                  m_campos.calorias};
    const int campo = campos[coluna];
    if (coluna == Nome)
        if (std::vector<int> postos = PostosDoNome(); !postos.empty())
            return postos;

    // Most columns hold few texts many times: only those are put in order.
    struct Distinto {
        std::string chave;
        int qual;
    };
    std::unordered_map<quint64, int> conhecidos;
    std::vector<Distinto> distintos;
    std::vector<int> postos(static_cast<std::size_t>(m_receitas.RecordCount()));
    Respiro respirar;
    for (std::size_t i = 0; i < postos.size(); ++i) {
        const auto registro = static_cast<int>(i);
        const auto [achado, novo] =
            conhecidos.try_emplace(m_receitas.MarcaEm(registro, campo), static_cast<int>(distintos.size()));
        if (novo)
            distintos.push_back(
                {Ordem::Chave(m_receitas.Utf8Em(registro, campo)), static_cast<int>(distintos.size())});
        postos[i] = achado->second;
        respirar();
    }
    std::sort(distintos.begin(), distintos.end(), [&respirar](const Distinto &a, const Distinto &b) {
        respirar();
        return a.chave < b.chave;
    });
    std::vector<int> lugares(distintos.size());
    int lugar = 0;
    for (std::size_t i = 0; i < distintos.size(); ++i) {
        lugar += i > 0 && distintos[i].chave != distintos[i - 1].chave ? 1 : 0;
        lugares[static_cast<std::size_t>(distintos[i].qual)] = lugar;
    }
    for (int &posto : postos)
        posto = lugares[static_cast<std::size_t>(posto)];
    return postos;
}

std::vector<int> LinhasLista::Ordenar(Coluna coluna)
{
    if (m_linhas.empty())
        return {};
    const std::vector<int> postos = Postos(coluna);
    const auto posto = [&](std::size_t linha) {
        return static_cast<std::size_t>(postos[static_cast<std::size_t>(m_linhas[linha])]);
    };
    // Counted into their places: equal ones keep their order, and nothing is compared any more.
    std::vector<std::size_t> proximo(
        static_cast<std::size_t>(*std::max_element(postos.begin(), postos.end())) + 2, 0);
    for (std::size_t linha = 0; linha < m_linhas.size(); ++linha)
        ++proximo[posto(linha) + 1];
    std::partial_sum(proximo.begin(), proximo.end(), proximo.begin());
    std::vector<int> antigos(m_linhas.size());
    for (std::size_t linha = 0; linha < m_linhas.size(); ++linha)
        antigos[proximo[posto(linha)]++] = static_cast<int>(linha);

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

bool Ascii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}
} // namespace

int LinhasLista::ProcurarNome(const QString &inicio, int aPartirDe) const
{
    if (inicio.isEmpty())
        return -1;
    // Plain first letters tell most names apart without making a text of them.
    const QChar primeira = SemAcento(inicio[0]);
    const bool simples = primeira.unicode() < 0x80;
    const auto procurar = [&](auto serve) {
        for (int i = 0; i < Quantas(); ++i) {
            const int linha = (aPartirDe + i) % Quantas();
            const std::string_view nome =
                m_receitas.Utf8Em(m_linhas[static_cast<std::size_t>(linha)], m_campos.nome);
            if (simples && !nome.empty() && Ascii(nome[0]) &&
                QChar(QLatin1Char(nome[0])).toLower() != primeira)
                continue;
            if (serve(Texto(linha, Nome)))
                return linha;
        }
        return -1;
    };
    const int linha =
        procurar([&](const QString &nome) { return nome.startsWith(inicio, Qt::CaseInsensitive); });
    return linha >= 0 ? linha : procurar([&](const QString &nome) { return ComecaSemAcento(nome, inicio); });
}
