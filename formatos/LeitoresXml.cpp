// XML of desktop programs: repaired first, for it is often not well-formed, then read by name.

#include "formatos/Entrada.h"
#include "formatos/Limpeza.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Medidas.h"
#include "formatos/Rascunho.h"

#include <QRegularExpression>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cmath>
#include <memory>

namespace
{
using namespace Formatos;

QString Texto(const xmlChar *texto)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(texto));
}

/// An element of the tree; a missing one is empty in every answer.
class No
{
public:
    explicit No(const xmlNode *no = nullptr)
        : m_no(no)
    {
    }
    explicit operator bool() const { return m_no; }

    bool Chama(const char *nome) const
    {
        return m_no && m_no->type == XML_ELEMENT_NODE &&
               xmlStrcasecmp(m_no->name, reinterpret_cast<const xmlChar *>(nome)) == 0;
    }
    QList<No> Filhos() const
    {
        QList<No> filhos;
        for (const xmlNode *filho = m_no ? m_no->children : nullptr; filho; filho = filho->next)
            if (filho->type == XML_ELEMENT_NODE)
                filhos += No(filho);
        return filhos;
    }
    No Filho(const char *nome) const
    {
        for (const xmlNode *filho = m_no ? m_no->children : nullptr; filho; filho = filho->next)
            if (No(filho).Chama(nome))
                return No(filho);
        return No();
    }
    /// Every element of this name below, however deep.
    QList<No> Todos(const char *nome) const
    {
        QList<No> achados;
        for (const xmlNode *no = Seguinte(m_no); no; no = Seguinte(no))
            if (No(no).Chama(nome))
                achados += No(no);
        return achados;
    }
    QString Conteudo() const
    {
        QString texto;
        for (const xmlNode *no = Seguinte(m_no); no; no = Seguinte(no)) {
            if (no->type == XML_TEXT_NODE || no->type == XML_CDATA_SECTION_NODE)
                texto += Texto(no->content);
            else if (No(no).Chama("br") || No(no).Chama("p"))
                texto += u'\n';
        }
        return texto;
    }
    QString Conteudo(const char *filho) const { return Filho(filho).Conteudo().trimmed(); }
    QString Atributo(const char *nome) const
    {
        for (const xmlAttr *atributo = m_no ? m_no->properties : nullptr; atributo; atributo = atributo->next)
            if (xmlStrcasecmp(atributo->name, reinterpret_cast<const xmlChar *>(nome)) == 0) {
                QString valor;
                for (const xmlNode *parte = atributo->children; parte; parte = parte->next)
                    if (parte->content)
                        valor += Texto(parte->content);
                return valor;
            }
        return {};
    }

private:
    const xmlNode *Seguinte(const xmlNode *no) const
    {
        if (!no)
            return nullptr;
        if (no->children && no->type == XML_ELEMENT_NODE)
            return no->children;
        while (no && no != m_no) {
            if (no->next)
                return no->next;
            no = no->parent;
        }
        return nullptr;
    }

    const xmlNode *m_no;
};

/// A parsed file.
class Arvore
{
public:
    explicit Arvore(const QString &texto)
    {
        const QByteArray utf8 = Consertar(texto).toUtf8();
        m_documento.reset(xmlReadMemory(utf8.constData(), static_cast<int>(utf8.size()), nullptr, "UTF-8",
                                        XML_PARSE_RECOVER | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET |
                                            XML_PARSE_HUGE));
    }
    No Raiz() const { return No(m_documento ? xmlDocGetRootElement(m_documento.get()) : nullptr); }

private:
    /// No declaration, no document type (so no entities of the file's own), no bare "&", no control character.
    static QString Consertar(QString texto)
    {
        static const QRegularExpression declaracao(R"(^\s*<\?xml[^>]*\?>)");
        static const QRegularExpression tipo(R"(<!DOCTYPE[^>\[]*(?:\[.*?\]\s*)?>)",
                                             QRegularExpression::DotMatchesEverythingOption |
                                                 QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression comercial(R"(&(?!(?:amp|lt|gt|quot|apos|#\d{1,7}|#[xX][0-9a-fA-F]{1,6});))");
        texto.remove(declaracao);
        const qsizetype raiz = std::min<qsizetype>(texto.size(), 100'000);
        if (const auto m = tipo.match(texto.first(raiz)); m.hasMatch())
            texto.remove(m.capturedStart(), m.capturedLength());
        if (texto.contains(u'&'))
            texto.replace(comercial, "&amp;");
        for (QChar &c : texto)
            if ((c.unicode() < 0x20 && c != u'\n' && c != u'\r' && c != u'\t') || c.unicode() >= 0xFFFE)
                c = u' ';
        return texto;
    }

    struct Soltar {
        void operator()(xmlDoc *documento) const { xmlFreeDoc(documento); }
    };
    std::unique_ptr<xmlDoc, Soltar> m_documento;
};

QByteArray ConjuntoDoXml(const QByteArray &bytes)
{
    static const QRegularExpression encoding(R"re(encoding\s*=\s*["']([^"']+)["'])re");
    return encoding.match(QString::fromLatin1(bytes.first(std::min<qsizetype>(bytes.size(), 300)))).captured(1).toLatin1();
}

QByteArray Base64(const QString &texto)
{
    return QByteArray::fromBase64(texto.toLatin1());
}

void GuardarSeHouver(const Rascunho &rascunho, Relato &relato, QList<Receita> &receitas)
{
    if (const std::optional<Receita> receita = Montar(rascunho, relato))
        receitas += *receita;
}

LinhaLida Partes(const QString &quantidade, const QString &unidade, const QString &ingrediente)
{
    return {LinhaLida::Tipo::Partes, {}, quantidade, unidade, ingrediente, {}, false};
}

// ---- Gourmet ------------------------------------------------------------------------------------------------

constexpr int kMaisGrupos = 16; ///< groups within each other

void LerLinhasGourmet(const No &lista, Rascunho &r, int nivel = 0)
{
    if (nivel > kMaisGrupos)
        return;
    for (const No &no : lista.Filhos()) {
        if (no.Chama("inggroup")) {
            r.Titulo(no.Conteudo("groupname"));
            LerLinhasGourmet(no, r, nivel + 1);
        } else if (no.Chama("ingredient")) {
            QString item = no.Conteudo("item");
            if (item.isEmpty())
                item = no.Conteudo("key");
            LinhaLida linha = Partes(no.Conteudo("amount"), no.Conteudo("unit"), item);
            const QString opcional = no.Atributo("optional").trimmed().toLower();
            linha.opcional = !opcional.isEmpty() && opcional != "no" && opcional != "false";
            r.linhas += linha;
        } else if (no.Chama("ingref")) {
            r.linhas += Partes(no.Atributo("amount"), {}, no.Conteudo().trimmed());
        }
    }
}

Rascunho LerReceitaGourmet(const No &no)
{
    Rascunho r;
    r.nome = no.Conteudo("title");
    r.tipos = {no.Conteudo("category")};
    r.tiposNumTexto = true;
    r.outrasCategorias = {no.Conteudo("cuisine")};
    r.fontes = {no.Conteudo("source")};
    r.url = no.Conteudo("link");
    r.tempoPreparo = no.Conteudo("preptime");
    r.tempoCozimento = no.Conteudo("cooktime");
    const QString rende = no.Conteudo("yields");
    r.rendimento = {rende.isEmpty() ? no.Conteudo("servings") : rende};
    r.figura = Base64(no.Conteudo("image"));
    LerLinhasGourmet(no.Filho("ingredient-list"), r);
    r.passos += PassoLido{{}, no.Conteudo("instructions")};
    r.notas = {no.Conteudo("modifications")};
    return r;
}

// ---- KRecipes -----------------------------------------------------------------------------------------------

LinhaLida LerIngredienteKre(const No &no)
{
    const No quantidade = no.Filho("amount");
    QString texto = quantidade.Conteudo().trimmed();
    if (const No minimo = quantidade.Filho("min")) {
        const QString de = minimo.Conteudo().trimmed();
        const QString ate = quantidade.Conteudo("max");
        texto = de == ate || ate.isEmpty() ? de : de.isEmpty() ? ate : de + " a " + ate;
    }
    static const QRegularExpression soNumero(R"(^\d+(?:[.,]\d+)?$)");
    if (soNumero.match(texto).hasMatch())
        texto = QuantidadeDoNumero(QString(texto).replace(u',', u'.').toDouble());
    LinhaLida linha = Partes(texto, no.Conteudo("unit"), no.Conteudo("name"));
    static const QRegularExpression virgulas(R"(\s*,\s*)");
    linha.observacao = no.Conteudo("prep").split(virgulas, Qt::SkipEmptyParts).join(", ");
    return linha;
}

void LerLinhasKre(const No &lista, Rascunho &r, int nivel = 0)
{
    if (nivel > kMaisGrupos)
        return;
    for (const No &no : lista.Filhos()) {
        if (no.Chama("ingredient-group")) {
            r.Titulo(no.Atributo("name"));
            LerLinhasKre(no, r, nivel + 1);
        } else if (no.Chama("ingredient")) {
            r.linhas += LerIngredienteKre(no);
            for (const No &troca : no.Filho("substitutes").Filhos()) {
                const LinhaLida linha = LerIngredienteKre(troca);
                QStringList partes = {linha.quantidade, linha.unidade, linha.ingrediente};
                partes.removeAll(QString(""));
                partes.removeAll(QString());
                if (!linha.ingrediente.isEmpty())
                    r.Texto("ou " + partes.join(u' ') + (linha.observacao.isEmpty() ? "" : ", " + linha.observacao));
            }
        }
    }
}

Rascunho LerReceitaKre(const No &no)
{
    Rascunho r;
    const No descricao = no.Filho("krecipes-description");
    r.nome = descricao.Conteudo("title");
    QStringList autores;
    for (const No &autor : descricao.Filhos())
        if (autor.Chama("author"))
            if (const QString nome = autor.Conteudo().trimmed(); !nome.isEmpty())
                autores += nome;
    r.fontes = {autores.join(", ")};
    for (const No &figura : descricao.Filho("pictures").Filhos())
        if (r.figura.isEmpty())
            r.figura = Base64(figura.Conteudo());
    for (const No &categoria : descricao.Filho("category").Filhos())
        r.tipos += categoria.Conteudo().trimmed();
    const No rende = descricao.Filho("yield");
    QString quanto = rende.Conteudo("amount");
    if (const No minimo = rende.Filho("amount").Filho("min"))
        quanto = minimo.Conteudo().trimmed();
    r.rendimento = {(quanto + u' ' + rende.Conteudo("type")).trimmed()};
    r.tempoTotal = descricao.Conteudo("preparation-time");
    LerLinhasKre(no.Filho("krecipes-ingredients"), r);
    r.passos += PassoLido{{}, no.Conteudo("krecipes-instructions")};
    return r;
}

// ---- MasterCook, XML ----------------------------------------------------------------------------------------

Rascunho LerReceitaMx2(const No &no)
{
    static const QRegularExpression faixa(R"(^(\d+)\s+(\d+)$)");
    static const QRegularExpression calorias(R"((\d[\d.,]*)\s*Calories)", QRegularExpression::CaseInsensitiveOption);
    Rascunho r;
    r.markdown = false;
    r.nome = no.Atributo("name");
    r.autor = no.Atributo("author");
    r.rendimento = {no.Filho("Serv").Atributo("qty")};
    if (const No rende = no.Filho("Yield"))
        r.rendimento += (rende.Atributo("qty") + u' ' + rende.Atributo("unit")).trimmed();
    r.tempoPreparo = no.Filho("PrpT").Atributo("elapsed");
    r.tempoTotal = no.Filho("TTim").Atributo("elapsed");
    for (const No &categoria : no.Todos("CatT"))
        r.tipos += categoria.Conteudo().trimmed();
    for (const No &item : no.Todos("IngR")) {
        const QString codigo = item.Atributo("code").trimmed();
        const QString nome = item.Atributo("name");
        if (codigo == "S") {
            r.Titulo(nome);
            continue;
        }
        if (codigo == "T") {
            r.Texto(nome);
            continue;
        }
        QString quantidade = item.Atributo("qty").trimmed();
        if (const auto m = faixa.match(quantidade); m.hasMatch())
            quantidade = m.captured(1) + " a " + m.captured(2);
        LinhaLida linha = Partes(quantidade, item.Atributo("unit"), nome);
        linha.observacao = item.Conteudo("IPrp");
        r.linhas += linha;
    }
    for (const No &passo : no.Todos("DirT"))
        r.passos += PassoLido{{}, passo.Conteudo()};
    r.descricao = {no.Conteudo("Desc")};
    r.notas = {no.Conteudo("Note")};
    r.fontes = {no.Conteudo("Srce")};
    for (const No &fonte : no.Todos("AltS")) {
        const QString texto = fonte.Atributo("source").trimmed();
        if (texto.startsWith("http", Qt::CaseInsensitive) && r.url.isEmpty())
            r.url = texto;
        else
            r.fontes += texto;
    }
    const QString nutricao = no.Conteudo("Nutr");
    if (const auto m = calorias.match(nutricao.left(1000)); m.hasMatch())
        r.calorias = m.captured(1) + " kcal";
    if (!nutricao.isEmpty())
        r.nutrientes = {nutricao};
    return r;
}

template <class Funcao>
QList<Receita> LerTodas(const Entrada &entrada, Relato &relato, const char *elemento, Funcao ler)
{
    const Arvore arvore(entrada.Texto(ConjuntoDoXml(entrada.bytes)));
    QList<Receita> receitas;
    if (!arvore.Raiz()) {
        relato.Avisar("O arquivo XML está danificado.");
        return receitas;
    }
    for (const No &no : arvore.Raiz().Todos(elemento))
        GuardarSeHouver(ler(no), relato, receitas);
    return receitas;
}
} // namespace

QList<Receita> Formatos::LerGourmet(const Entrada &entrada, Relato &relato)
{
    return LerTodas(entrada, relato, "recipe", LerReceitaGourmet);
}

QList<Receita> Formatos::LerKRecipes(const Entrada &entrada, Relato &relato)
{
    return LerTodas(entrada, relato, "krecipes-recipe", LerReceitaKre);
}

QList<Receita> Formatos::LerMasterCookXml(const Entrada &entrada, Relato &relato)
{
    return LerTodas(entrada, relato, "RcpE", LerReceitaMx2);
}

// ---- MasterCook, text ---------------------------------------------------------------------------------------

namespace
{
constexpr qsizetype kMaiorCampo = 1000; ///< of a line with a field

bool EInicioMxp(const QString &linha)
{
    if (linha.size() > kMaiorCampo)
        return false;
    static const QRegularExpression inicio(R"(^\s*\*\s*Exported\s+from\s+MasterCook)",
                                           QRegularExpression::CaseInsensitiveOption);
    return inicio.match(linha).hasMatch();
}

/// An ingredient by its columns: 1-8 amount, 11-22 unit, 25 and on the text; or the three parts apart by tabs.
bool LerIngredienteMxp(const QString &linha, Rascunho &r)
{
    QString quantidade, unidade, texto;
    bool aDireita = false;
    if (linha.contains(u'\t')) {
        const QStringList partes = linha.split(u'\t');
        quantidade = partes.value(0).trimmed();
        unidade = partes.value(1).trimmed();
        texto = partes.mid(2).join(u' ').trimmed();
    } else {
        quantidade = linha.left(8).trimmed();
        unidade = linha.mid(10, 12).trimmed();
        texto = linha.mid(24).trimmed();
        aDireita = linha.size() > 24 && linha[24] == u' ';
    }
    if (texto.isEmpty())
        return false;
    if (quantidade.isEmpty() && unidade.isEmpty() && !r.linhas.isEmpty() && (texto.startsWith("--") || aDireita)) {
        LinhaLida &anterior = r.linhas.last();
        if (texto.startsWith("--"))
            texto = texto.sliced(2).trimmed();
        if (anterior.observacao.isEmpty() && !linha.trimmed().startsWith("--"))
            anterior.ingrediente += u' ' + texto;
        else
            anterior.observacao += (anterior.observacao.isEmpty() ? "" : " ") + texto;
        return true;
    }
    LinhaLida item = Partes(quantidade, unidade, texto);
    if (const qsizetype traco = texto.indexOf(" -- "); traco >= 0) {
        item.ingrediente = texto.first(traco).trimmed();
        item.observacao = texto.sliced(traco + 4).trimmed();
    } else if (texto.endsWith(" --")) {
        item.ingrediente = texto.chopped(3).trimmed();
    }
    r.linhas += item;
    return true;
}

std::optional<Receita> LerUmaMxp(const QStringList &linhas, Relato &relato)
{
    static const QRegularExpression campo(
        R"(^\s*(Recipe By|Serving Size|Categories)\s*:\s*(.*)$)", QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tempo(R"(^(.*?)\s+Preparation Time\s*:\s*(\S*))", QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression regua(R"(^\s*-{6,}\s+-{6,})");
    static const QRegularExpression rotulo(R"(^(Source|Description|Yield|Copyright|T\(.*\)|S\(.*\))\s*:\s*$)",
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression fim(R"(^\s*(?:- ){4,}-?\s*$)");
    static const QRegularExpression calorias(R"(^\s*Per serving:?.*?(\d[\d.,]*)\s*Calories)",
                                             QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression notas(R"(^NOTES\s*:\s*(.*)$)");
    Rascunho r;
    r.markdown = false;
    enum class Onde { Nome, Campos, Linhas, Modo, Fim } onde = Onde::Nome;
    QString paragrafo;
    QString nota;
    bool emNota = false;
    bool categorias = false;
    const auto fechar = [&] {
        if (!paragrafo.isEmpty())
            r.passos += PassoLido{{}, std::exchange(paragrafo, QString())};
    };
    for (qsizetype i = 0; i < linhas.size(); ++i) {
        const QString &linha = linhas[i];
        const QString limpa = linha.trimmed();
        switch (onde) {
        case Onde::Nome:
            if (!limpa.isEmpty()) {
                r.nome = limpa;
                onde = Onde::Campos;
            }
            break;
        case Onde::Campos:
            if (regua.match(linha).hasMatch()) {
                onde = Onde::Linhas;
            } else if (const auto m = campo.match(linha.left(kMaiorCampo)); m.hasMatch()) {
                const QString nome = m.captured(1).toLower();
                QString valor = m.captured(2).trimmed();
                categorias = nome == "categories";
                if (nome == "recipe by") {
                    r.autor = valor;
                } else if (nome == "serving size") {
                    if (const auto t = tempo.match(valor); t.hasMatch()) {
                        r.tempoPreparo = t.captured(2);
                        valor = t.captured(1).trimmed();
                    }
                    r.rendimento = {valor};
                } else {
                    static const QRegularExpression colunas(R"(\s{2,}|\t)");
                    r.tipos += valor.split(colunas, Qt::SkipEmptyParts);
                }
            } else if (categorias && !limpa.isEmpty() && !limpa.startsWith("Amount")) {
                static const QRegularExpression colunas(R"(\s{2,}|\t)");
                r.tipos += limpa.split(colunas, Qt::SkipEmptyParts);
            }
            break;
        case Onde::Linhas:
            if (limpa.isEmpty() || !LerIngredienteMxp(linha, r)) {
                if (!r.linhas.isEmpty() || !limpa.isEmpty())
                    onde = Onde::Modo;
                if (!limpa.isEmpty())
                    paragrafo = limpa;
            }
            break;
        case Onde::Modo:
            if (fim.match(linha).hasMatch()) {
                fechar();
                onde = Onde::Fim;
            } else if (const auto m = rotulo.match(limpa); m.hasMatch()) {
                fechar();
                QString valor;
                while (i + 1 < linhas.size() && !linhas[i + 1].trimmed().isEmpty())
                    valor += (valor.isEmpty() ? "" : " ") + linhas[++i].trimmed();
                if (valor.size() >= 2 && valor.startsWith(u'"') && valor.endsWith(u'"'))
                    valor = valor.sliced(1, valor.size() - 2);
                const QString nome = m.captured(1).toLower();
                if (nome == "source")
                    r.fontes = {valor};
                else if (nome == "description")
                    r.descricao = {valor};
                else if (nome == "yield")
                    r.rendimento += valor;
                else
                    r.notas += m.captured(1) + ": " + valor;
            } else if (limpa.isEmpty()) {
                fechar();
            } else {
                paragrafo += (paragrafo.isEmpty() ? "" : " ") + limpa;
            }
            break;
        case Onde::Fim:
            if (const auto c = calorias.match(linha.left(kMaiorCampo)); c.hasMatch()) {
                r.calorias = c.captured(1) + " kcal";
                r.nutrientes = {limpa};
            } else if (const auto n = notas.match(limpa); n.hasMatch()) {
                emNota = true;
                nota = n.captured(1);
            } else if (emNota && !limpa.isEmpty() && !limpa.contains("Nutr. Assoc.")) {
                nota += u' ' + limpa;
            } else if (limpa.contains("Nutr. Assoc.")) {
                emNota = false;
            }
            break;
        }
    }
    fechar();
    if (!nota.isEmpty())
        r.notas += nota;
    return Montar(r, relato);
}
} // namespace

QList<Receita> Formatos::LerMasterCookTexto(const Entrada &entrada, Relato &relato)
{
    QString texto = entrada.Texto();
    texto.replace("\r\n", "\n").replace(u'\r', u'\n');
    QList<Receita> receitas;
    QStringList linhas;
    bool dentro = false;
    const auto fechar = [&] {
        if (dentro)
            if (const std::optional<Receita> receita = LerUmaMxp(linhas, relato))
                receitas += *receita;
        linhas.clear();
    };
    for (const QString &linha : texto.split(u'\n')) {
        if (EInicioMxp(linha)) {
            fechar();
            dentro = true;
        } else if (dentro) {
            linhas += linha;
        }
    }
    fechar();
    return receitas;
}
