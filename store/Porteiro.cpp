#include "store/Porteiro.h"

#include <vector>

namespace
{
enum class Tipo { Palavra, Texto, Nome, Sinal };

struct Peca {
    Tipo tipo = Tipo::Sinal;
    std::string_view texto; ///< without the quotes' meaning: a text is as it stands, quotes included
};

bool DePalavra(char c)
{
    const auto u = static_cast<unsigned char>(c);
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_' ||
           u == '$' || u >= 0x80;
}

bool Branco(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

char Minuscula(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool Igual(std::string_view a, std::string_view minusculas)
{
    if (a.size() != minusculas.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Minuscula(a[i]) != minusculas[i])
            return false;
    return true;
}

/// The statement in pieces; what the engine would refuse anyway (an open quote) is left to it.
class Pecas
{
public:
    explicit Pecas(std::string_view sql);

    const QString &Recusa() const { return m_recusa; }
    std::size_t Quantas() const { return m_pecas.size(); }
    bool Palavra(std::size_t i, std::string_view palavra) const
    {
        return i < m_pecas.size() && m_pecas[i].tipo == Tipo::Palavra && Igual(m_pecas[i].texto, palavra);
    }
    bool Sinal(std::size_t i, char sinal) const
    {
        return i < m_pecas.size() && m_pecas[i].tipo == Tipo::Sinal && m_pecas[i].texto.front() == sinal;
    }
    bool Texto(std::size_t i) const { return i < m_pecas.size() && m_pecas[i].tipo == Tipo::Texto; }
    bool Tabela(std::size_t i) const { return Palavra(i, "receitas") || Palavra(i, "ingredientes"); }
    /// Nothing but statement ends from here on.
    bool Fim(std::size_t i) const
    {
        while (Sinal(i, ';'))
            ++i;
        return i >= m_pecas.size();
    }
    std::size_t Vezes(std::string_view palavra) const
    {
        std::size_t vezes = 0;
        for (std::size_t i = 0; i < m_pecas.size(); ++i)
            vezes += Palavra(i, palavra) ? 1 : 0;
        return vezes;
    }
    /// Behind the bracket that closes the one at `i`; 0 when none does.
    std::size_t DepoisDoFecho(std::size_t i) const
    {
        int abertos = 0;
        for (; i < m_pecas.size(); ++i) {
            if (Sinal(i, '('))
                ++abertos;
            else if (Sinal(i, ')') && --abertos == 0)
                return i + 1;
        }
        return 0;
    }

private:
    std::vector<Peca> m_pecas;
    QString m_recusa;
};

Pecas::Pecas(std::string_view sql)
{
    for (std::size_t i = 0; i < sql.size();) {
        const char c = sql[i];
        const char seguinte = i + 1 < sql.size() ? sql[i + 1] : '\0';
        if (Branco(c)) {
            ++i;
            continue;
        }
        if ((c == '-' && seguinte == '-') || (c == '/' && seguinte == '*')) {
            m_recusa =
                QString("Sinais não aceitos no comando: %1%2").arg(QLatin1Char(c)).arg(QLatin1Char(seguinte));
            return;
        }
        if (c == '|') { // texts that grow by being joined
            m_recusa = "Sinal não aceito no comando: |";
            return;
        }
        std::size_t fim = i + 1;
        Tipo tipo = Tipo::Sinal;
        if (c == '\'' || c == '"' || c == '`' || c == '[') {
            const char fecho = c == '[' ? ']' : c;
            tipo = c == '\'' ? Tipo::Texto : Tipo::Nome;
            for (;;) {
                fim = sql.find(fecho, fim);
                if (fim == std::string_view::npos) {
                    fim = sql.size();
                    break;
                }
                ++fim;
                // A doubled quote is one inside.
                if (fecho == ']' || fim == sql.size() || sql[fim] != fecho)
                    break;
                ++fim;
            }
        } else if (DePalavra(c)) {
            tipo = Tipo::Palavra;
            while (fim < sql.size() && DePalavra(sql[fim]))
                ++fim;
        }
        m_pecas.push_back({tipo, sql.substr(i, fim - i)});
        i = fim;
    }
}

/// "id_receitas in (Select id_receitas from Ingredientes Where Ingrediente = 'text')", the second SELECT at
/// `i`.
bool PerguntaDaPesquisa(const Pecas &p, std::size_t i)
{
    return i >= 3 && p.Palavra(i - 3, "id_receitas") && p.Palavra(i - 2, "in") && p.Sinal(i - 1, '(') &&
           p.Palavra(i + 1, "id_receitas") && p.Palavra(i + 2, "from") && p.Palavra(i + 3, "ingredientes") &&
           p.Palavra(i + 4, "where") && p.Palavra(i + 5, "ingrediente") && p.Sinal(i + 6, '=') &&
           p.Texto(i + 7) && p.Sinal(i + 8, ')');
}

QString RecusaDaConsulta(const Pecas &p)
{
    std::size_t fontes = 0;
    for (std::size_t i = 1; i < p.Quantas(); ++i) {
        if (p.Palavra(i, "select") && !PerguntaDaPesquisa(p, i))
            return "Uma consulta dentro de outra.";
        // The engine takes "in table" for a query as well.
        if (p.Palavra(i, "in") && !p.Sinal(i + 1, '('))
            return "Uma consulta dentro de outra.";
        if (!p.Palavra(i, "from"))
            continue;
        ++fontes;
        // One table, and behind it what limits or orders its rows.
        const bool sozinha = p.Tabela(i + 1) && (p.Fim(i + 2) || p.Palavra(i + 2, "where") ||
                                                 p.Palavra(i + 2, "order") || p.Palavra(i + 2, "group"));
        if (!sozinha)
            return "A consulta lê mais do que uma tabela do livro.";
    }
    return fontes == p.Vezes("select") && fontes <= 2 ? QString()
                                                      : QString("A consulta não lê uma tabela do livro.");
}

QString RecusaDaInclusao(const Pecas &p)
{
    const QString recusa = "Só é aceita a inclusão de uma linha de cada vez.";
    if (!p.Palavra(1, "into") || !p.Tabela(2) || !p.Sinal(3, '('))
        return recusa;
    const std::size_t valores = p.DepoisDoFecho(3);
    if (valores == 0 || !p.Palavra(valores, "values") || !p.Sinal(valores + 1, '('))
        return recusa;
    const std::size_t fim = p.DepoisDoFecho(valores + 1);
    return fim != 0 && p.Fim(fim) ? QString() : recusa;
}
} // namespace

QString Porteiro::Recusa(std::string_view sql)
{
    const Pecas p(sql);
    if (!p.Recusa().isEmpty())
        return p.Recusa();
    if (p.Palavra(0, "select"))
        return RecusaDaConsulta(p);
    for (const char *palavra : {"select", "with", "returning", "conflict"})
        if (p.Vezes(palavra) > 0)
            return "Uma consulta dentro de um comando.";
    if (p.Palavra(0, "insert"))
        return RecusaDaInclusao(p);
    if (p.Palavra(0, "update")) {
        const bool simples =
            p.Tabela(1) && p.Palavra(2, "set") && p.Vezes("from") == 0 && p.Vezes("where") <= 1;
        return simples ? QString() : QString("A alteração não é de uma tabela do livro.");
    }
    if (p.Palavra(0, "delete")) {
        const bool simples = p.Palavra(1, "from") && p.Tabela(2) && (p.Fim(3) || p.Palavra(3, "where")) &&
                             p.Vezes("from") == 1 && p.Vezes("where") <= 1;
        return simples ? QString() : QString("A exclusão não é de uma tabela do livro.");
    }
    return p.Quantas() == 0 || p.Fim(0) ? QString("O comando está vazio.")
                                        : QString("O comando não é aceito.");
}
