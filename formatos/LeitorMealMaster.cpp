#include "formatos/Entrada.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Rascunho.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace
{
using namespace Formatos;

constexpr qsizetype kSegundaColuna = 41; ///< where the second column begins
constexpr qsizetype kMaiorTitulo = 500;  ///< no heading is longer
constexpr qsizetype kTexto = 11;         ///< where a column's text begins

struct NomeDaUnidade {
    const char *um;
    const char *varios;
};

/// The codes in Portuguese; only "t" and "T" differ by case.
const QHash<QString, NomeDaUnidade> &Unidades()
{
    static const QHash<QString, NomeDaUnidade> unidades = {
        {"x", {"", ""}},
        {"ea", {"unidade", "unidades"}},
        {"cn", {"lata", "latas"}},
        {"pn", {"pitada", "pitadas"}},
        {"ds", {"pitada", "pitadas"}},
        {"dr", {"gota", "gotas"}},
        {"ts", {"colher de chá", "colheres de chá"}},
        {"tb", {"colher de sopa", "colheres de sopa"}},
        {"c", {"xícara", "xícaras"}},
        {"fl", {"onça líquida", "onças líquidas"}},
        {"pt", {"pint", "pints"}},
        {"qt", {"quart", "quarts"}},
        {"ga", {"galão", "galões"}},
        {"g", {"g", "g"}},
        {"kg", {"kg", "kg"}},
        {"mg", {"mg", "mg"}},
        {"cg", {"cg", "cg"}},
        {"dg", {"dg", "dg"}},
        {"ml", {"ml", "ml"}},
        {"cl", {"cl", "cl"}},
        {"dl", {"dl", "dl"}},
        {"l", {"litro", "litros"}},
        {"cb", {"cm³", "cm³"}},
        {"cc", {"cm³", "cm³"}},
        {"sl", {"fatia", "fatias"}},
        {"bn", {"maço", "maços"}},
        {"ct", {"caixa", "caixas"}},
        {"pk", {"pacote", "pacotes"}},
        {"oz", {"onça", "onças"}},
        {"lb", {"libra", "libras"}}};
    return unidades;
}

QString Tamanho(const QString &codigo)
{
    if (codigo == "sm")
        return "pequeno";
    if (codigo == "md")
        return "médio";
    return codigo == "lg" ? "grande" : QString();
}

bool EUnidade(const QString &codigo)
{
    return codigo.isEmpty() || codigo == "t" || codigo == "T" || !Tamanho(codigo.toLower()).isEmpty() ||
           Unidades().contains(codigo.toLower());
}

/// One column of an ingredient line.
struct Coluna {
    enum class Tipo { Nenhuma, Linha, Continuacao };
    Tipo tipo = Tipo::Nenhuma;
    QString quantidade, codigo, texto;
};

Coluna LerColuna(const QString &texto)
{
    static const QRegularExpression quantidade(R"(^[0-9 ./,-]{7}$)");
    Coluna coluna;
    if (texto.size() <= kTexto || texto.trimmed().isEmpty())
        return coluna;
    const QString frente = texto.first(kTexto);
    const QString resto = texto.sliced(kTexto).trimmed();
    if (frente.trimmed().isEmpty() && resto.startsWith(u'-') && !resto.startsWith("--")) {
        coluna.tipo = Coluna::Tipo::Continuacao;
        coluna.texto = resto.sliced(1).trimmed();
        return coluna;
    }
    const QString codigo = frente.sliced(8, 2).trimmed();
    if (!quantidade.match(frente.first(7)).hasMatch() || frente[7] != u' ' || frente[10] != u' ' || !EUnidade(codigo) ||
        resto.isEmpty() || texto[kTexto] == u' ')
        return coluna;
    coluna.tipo = Coluna::Tipo::Linha;
    coluna.quantidade = frente.first(7).simplified();
    coluna.codigo = codigo;
    coluna.texto = resto;
    return coluna;
}

QString Titulo(const QString &linha)
{
    static const QRegularExpression titulo(R"(^\s*(?:MMMMM|-{4,})[-\s]*([^-\s].*?)[-\s]*$)");
    return linha.size() > kMaiorTitulo ? QString() : titulo.match(linha).captured(1).trimmed();
}

bool EFim(const QString &linha)
{
    static const QRegularExpression fim(R"(^\s*(?:MMMMM-*|-{3,})\s*$)");
    return fim.match(linha).hasMatch();
}

bool ECabecalho(const QString &linha)
{
    static const QRegularExpression cabecalho(R"(^\s*(?:MMMMM|-{5,}).*Meal-?\s?Master)",
                                              QRegularExpression::CaseInsensitiveOption);
    return linha.size() <= kMaiorTitulo && cabecalho.match(linha).hasMatch();
}

/// One recipe, line by line.
class Leitor
{
public:
    std::optional<Receita> Ler(const QStringList &linhas, Relato &relato);

private:
    bool LerCabecalho(const QString &linha);
    bool LerIngrediente(const QString &linha);
    void FecharSecao();
    void Acrescentar(const Coluna &coluna);
    void LerModo(const QString &linha);
    void FecharParagrafo();

    Rascunho m_r;
    QList<Coluna> m_esquerda, m_direita;
    QString m_paragrafo;
    QString m_tituloEmEspera;
};

bool Leitor::LerCabecalho(const QString &linha)
{
    static const QRegularExpression campo(R"(^\s*(Title|Categories|Category|Yield|Servings)\s*:\s*(.*)$)",
                                          QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = campo.match(linha);
    if (!m.hasMatch())
        return false;
    const QString nome = m.captured(1).toLower();
    const QString valor = m.captured(2).trimmed();
    if (nome == "title") {
        m_r.nome = valor;
    } else if (nome.startsWith("categor")) {
        static const QRegularExpression separador(R"(\s*,\s*|\s{2,})");
        for (const QString &parte : valor.split(separador, Qt::SkipEmptyParts))
            if (parte.compare(QLatin1String("none"), Qt::CaseInsensitive) != 0)
                m_r.tipos += parte;
    } else {
        m_r.rendimento = {valor};
    }
    return true;
}

bool Leitor::LerIngrediente(const QString &linha)
{
    QString esquerda = linha;
    QString direita;
    if (linha.size() > kSegundaColuna + kTexto) {
        const Coluna segunda = LerColuna(linha.sliced(kSegundaColuna));
        const bool separada = linha.sliced(kSegundaColuna - 1, 1) == u" " || linha.first(kSegundaColuna).endsWith(u' ');
        if (segunda.tipo != Coluna::Tipo::Nenhuma && separada) {
            direita = linha.sliced(kSegundaColuna);
            esquerda = linha.first(kSegundaColuna);
        }
    }
    const Coluna primeira = LerColuna(esquerda);
    const bool vazia = esquerda.trimmed().isEmpty();
    if (primeira.tipo == Coluna::Tipo::Nenhuma && !(vazia && !direita.isEmpty()))
        return false;
    const auto juntar = [](QList<Coluna> &colunas, const Coluna &coluna) {
        if (coluna.tipo == Coluna::Tipo::Continuacao && !colunas.isEmpty())
            colunas.last().texto += u' ' + coluna.texto;
        else if (coluna.tipo != Coluna::Tipo::Nenhuma)
            colunas += coluna;
    };
    juntar(m_esquerda, primeira);
    if (!direita.isEmpty())
        juntar(m_direita, LerColuna(direita));
    return true;
}

void Leitor::Acrescentar(const Coluna &coluna)
{
    LinhaLida linha;
    linha.tipo = LinhaLida::Tipo::Partes;
    linha.quantidade = coluna.quantidade;
    linha.ingrediente = coluna.texto;
    const QString codigo = coluna.codigo.toLower();
    const double numero = UltimoNumero(QuantidadeDada(coluna.quantidade));
    const auto nome = [&](const NomeDaUnidade &unidade) { return QString::fromUtf8(numero >= 2 ? unidade.varios : unidade.um); };
    if (coluna.codigo == "T")
        linha.unidade = nome(Unidades()["tb"]);
    else if (coluna.codigo == "t")
        linha.unidade = nome(Unidades()["ts"]);
    else if (const QString tamanho = Tamanho(codigo); !tamanho.isEmpty())
        linha.ingrediente += " (tamanho " + tamanho + ")";
    else if (Unidades().contains(codigo))
        linha.unidade = nome(Unidades()[codigo]);
    if (codigo == "x" && linha.quantidade == "1")
        linha.quantidade.clear();
    m_r.linhas += linha;
}

void Leitor::FecharSecao()
{
    for (const Coluna &coluna : m_esquerda)
        Acrescentar(coluna);
    for (const Coluna &coluna : m_direita)
        Acrescentar(coluna);
    m_esquerda.clear();
    m_direita.clear();
}

void Leitor::FecharParagrafo()
{
    if (!m_paragrafo.isEmpty())
        m_r.passos += PassoLido{{}, std::exchange(m_paragrafo, QString())};
}

void Leitor::LerModo(const QString &linha)
{
    static const QRegularExpression fonte(R"(^\s*(?:Source|Fonte|Recipe by|From)\s*:\s*(.+)$)",
                                          QRegularExpression::CaseInsensitiveOption);
    QString texto = linha.trimmed();
    if (texto.isEmpty()) {
        FecharParagrafo();
        return;
    }
    if (const auto m = fonte.match(linha.left(kMaiorTitulo)); m.hasMatch() && m_r.fontes.isEmpty()) {
        FecharParagrafo();
        m_r.fontes = {m.captured(1).trimmed()};
        return;
    }
    qsizetype recuo = 0;
    while (recuo < linha.size() && linha[recuo] == u' ')
        ++recuo;
    if (texto.startsWith(u':')) {
        FecharParagrafo();
        texto = texto.sliced(1).trimmed();
    } else if (recuo >= 4) {
        FecharParagrafo();
    }
    m_paragrafo += (m_paragrafo.isEmpty() ? "" : " ") + texto;
}

std::optional<Receita> Leitor::Ler(const QStringList &linhas, Relato &relato)
{
    bool modo = false;
    bool campos = true;
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        const QString &linha = linhas[i];
        if (campos && !modo) {
            if (LerCabecalho(linha))
                continue;
            if (linha.trimmed().isEmpty())
                continue;
            campos = false;
        }
        if (const QString titulo = Titulo(linha); !titulo.isEmpty()) {
            // A heading of ingredients only when one follows before the method begins.
            qsizetype k = i + 1;
            while (k < linhas.size() && linhas[k].trimmed().isEmpty())
                ++k;
            Leitor prova;
            const bool comLinhas = !modo && k < linhas.size() && prova.LerIngrediente(linhas[k]);
            if (comLinhas) {
                FecharSecao();
                m_r.Titulo(titulo);
            } else {
                FecharParagrafo();
                m_r.passos += PassoLido{titulo, {}};
                modo = true;
            }
            continue;
        }
        if (!modo) {
            if (linha.trimmed().isEmpty() || LerIngrediente(linha))
                continue;
            modo = true;
        }
        LerModo(linha);
    }
    FecharSecao();
    FecharParagrafo();
    return Montar(m_r, relato);
}
} // namespace

QList<Receita> Formatos::LerMealMaster(const Entrada &entrada, Relato &relato)
{
    QString texto = entrada.Texto();
    texto.remove(QChar(0x14)).remove(QChar(0x1A)).replace("\r\n", "\n").replace(u'\r', u'\n').replace(u'\t', "    ");
    QList<Receita> receitas;
    QStringList linhas;
    bool dentro = false;
    const auto fechar = [&] {
        if (dentro && !linhas.isEmpty())
            if (const std::optional<Receita> receita = Leitor().Ler(linhas, relato))
                receitas += *receita;
        linhas.clear();
        dentro = false;
    };
    for (const QString &linha : texto.split(u'\n')) {
        if (ECabecalho(linha)) {
            fechar();
            dentro = true;
        } else if (dentro && EFim(linha)) {
            fechar();
        } else if (dentro) {
            linhas += linha;
        }
    }
    fechar();
    return receitas;
}
