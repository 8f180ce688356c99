// The book as one page that works without a network: what is read stands in it as plain HTML, and a script makes of
// it a list to search, a recipe to scale and to cook by, and a shopping list.

#include "formatos/EscritorJson.h"
#include "formatos/Exportador.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Palavras.h"
#include "formatos/Rascunho.h"

#include "base/Ordem.h"

#include <QBuffer>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>

namespace
{
using namespace Formatos;

constexpr qint64 kMaisFigurasDentro = qint64(48) * 1024 * 1024; ///< above this they go into a folder beside the page
constexpr int kLadoPequeno = 640;

QByteArray Recurso(const char *nome)
{
    Palavras::Da(); // the resources are there once it is
    QFile arquivo(QString(":/formatos/pagina/") + nome);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

QByteArray Html(const QString &texto)
{
    return texto.toHtmlEscaped().toUtf8();
}

/// JSON that may stand in a script element.
QByteArray JsonNaPagina(const QJsonDocument &documento)
{
    return documento.toJson(QJsonDocument::Compact).replace("<", "\\u003c");
}

QByteArray Pequena(const QByteArray &figura)
{
    QByteArray bytes = figura;
    QBuffer buffer(&bytes);
    QImageReader leitor(&buffer);
    leitor.setAutoTransform(true);
    QImage imagem = leitor.read();
    if (imagem.isNull())
        return figura;
    if (std::max(imagem.width(), imagem.height()) > kLadoPequeno)
        imagem = imagem.scaled(kLadoPequeno, kLadoPequeno, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QByteArray jpeg;
    QBuffer saida(&jpeg);
    saida.open(QIODevice::WriteOnly);
    if (!imagem.convertToFormat(QImage::Format_RGB32).save(&saida, "JPEG", 82) || jpeg.size() >= figura.size())
        return figura;
    return jpeg;
}

QString Extensao(const QByteArray &figura)
{
    const QString formato = FormatoDaFigura(figura);
    return formato == "JPEG" ? QString("jpg") : formato.toLower();
}

QString Resumo(const Receita &receita)
{
    QStringList partes;
    for (const QString &parte : {receita.Classificacao, receita.Preparo})
        if (!parte.isEmpty())
            partes += parte;
    return partes.join(" · ");
}

QString DadosDaReceita(const Receita &receita)
{
    QStringList partes;
    if (!receita.Classificacao.isEmpty())
        partes += receita.Classificacao;
    if (const QString porcoes = SemZero(receita.Porcoes); !porcoes.isEmpty())
        partes += porcoes + (porcoes == "1" ? " porção" : " porções");
    if (!receita.Preparo.isEmpty())
        partes += receita.Preparo;
    if (const QString calorias = SemZero(receita.Calorias); !calorias.isEmpty())
        partes += calorias + " kcal" + (receita.Tipo_Calorias == "R"   ? " na receita"
                                        : receita.Tipo_Calorias == "P" ? " por porção"
                                                                       : "");
    if (!receita.Origem.isEmpty())
        partes += receita.Origem;
    return partes.join(" · ");
}

QStringList Paragrafos(const QString &texto)
{
    QStringList paragrafos;
    for (const QString &linha : QString(texto).replace("\r\n", "\n").split(u'\n'))
        if (const QString limpa = linha.trimmed(); !limpa.isEmpty())
            paragrafos += limpa;
    return paragrafos;
}

/// Writes the page piece by piece.
class Pagina
{
public:
    Pagina(const Saida &saida, const QString &destino, const QString &figuras, Relato &relato)
        : m_saida(saida)
        , m_destino(destino)
        , m_figuras(figuras)
        , m_relato(relato)
        , m_arquivo(destino)
    {
    }

    QString Gravar();

private:
    void Por(const QByteArray &bytes) { m_ok = m_ok && m_arquivo.write(bytes) == bytes.size(); }
    void PorCabeca();
    void PorLista();
    QString PorReceitas();
    void PorReceita(const ReceitaDoLivro &r, const QString &src);
    void PorDados();
    QString EscolherLugarDasFiguras();
    /// The src of the recipe's picture, "" without one; written beside the page where it is not inside.
    QString Src(const ReceitaDoLivro &r, QString &erro);

    const Saida &m_saida;
    QString m_destino;
    QString m_figuras;
    Relato &m_relato;
    QSaveFile m_arquivo;
    bool m_ok = true;
    QString m_pastaDasFiguras; ///< "" while they are inside
    QHash<qint64, bool> m_temFigura;
};

QString Pagina::EscolherLugarDasFiguras()
{
    if (m_figuras == "nenhuma")
        return {};
    qint64 soma = 0;
    for (const ReceitaDoLivro &r : m_saida.receitas) {
        const QByteArray figura = r.receita.Figura.isEmpty() ? QByteArray() : m_saida.livro.Figura(r);
        const bool serve = !FormatoDaFigura(figura).isEmpty();
        if (!serve && !r.receita.Figura.isEmpty()) {
            m_relato.DefinirReceita(r.receita.Nome);
            m_relato.FaltaFigura("A figura " + r.receita.Figura + " não está na pasta Fotos ou não é uma imagem.");
        }
        m_temFigura[r.numero] = serve;
        soma += m_figuras == "pequenas" ? std::min<qint64>(figura.size(), 80 * 1024) : figura.size();
    }
    if (soma <= kMaisFigurasDentro)
        return {};
    const QFileInfo info(m_destino);
    m_pastaDasFiguras = info.completeBaseName() + "_figuras";
    const QString caminho = info.absolutePath() + "/" + m_pastaDasFiguras;
    const QDir pasta(caminho);
    if (pasta.exists() && !pasta.isEmpty())
        return "A pasta das figuras já existe e não está vazia: " + caminho;
    return QDir().mkpath(caminho) ? QString() : "Não foi possível criar a pasta " + caminho;
}

QString Pagina::Src(const ReceitaDoLivro &r, QString &erro)
{
    if (!m_temFigura.value(r.numero))
        return {};
    QByteArray figura = m_saida.livro.Figura(r);
    if (m_figuras == "pequenas")
        figura = Pequena(figura);
    if (m_pastaDasFiguras.isEmpty())
        return "data:image/" + FormatoDaFigura(figura).toLower() + ";base64," + QString::fromLatin1(figura.toBase64());
    const QString nome = "F" + QString::number(r.numero).rightJustified(7, u'0') + "." + Extensao(figura);
    erro = GravarInteiro(QFileInfo(m_destino).absolutePath() + "/" + m_pastaDasFiguras + "/" + nome, figura);
    return QString::fromLatin1(m_pastaDasFiguras.toUtf8().toPercentEncoding()) + "/" + nome;
}

void Pagina::PorCabeca()
{
    Por("<!DOCTYPE html>\n<html lang=\"pt-BR\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta name=\"generator\" content=\"Cozinhario 2005\">\n"
        "<title>Livro de receitas</title>\n<style>\n");
    Por(Recurso("estilo.css"));
    Por("</style>\n<script>document.documentElement.className='js'</script>\n</head>\n<body>\n"
        "<a class=\"pular\" href=\"#lista\">Ir para as receitas</a>\n<header id=\"topo\">\n<h1>Livro de receitas</h1>\n");
    const qsizetype quantas = m_saida.receitas.size();
    Por("<p class=\"fraco\" id=\"achadas\" role=\"status\">" + QByteArray::number(quantas) +
        (quantas == 1 ? " receita" : " receitas") + "</p>\n");
    Por("<form class=\"barra nao-imprime\" id=\"ferramentas\" role=\"search\" hidden>\n"
        "<input type=\"search\" id=\"busca\" placeholder=\"Procurar\" aria-label=\"Procurar receitas\" autocomplete=\"off\">\n"
        "<select id=\"onde\" aria-label=\"Onde procurar\"><option value=\"tudo\">Em tudo</option>"
        "<option value=\"nome\">No nome</option><option value=\"ingrediente\">Nos ingredientes</option></select>\n"
        "<select id=\"tipo\" aria-label=\"Tipo de receita\"><option value=\"\">Todos os tipos</option></select>\n"
        "<a href=\"#compras\" id=\"ver-compras\">Lista de compras</a>\n</form>\n</header>\n<main>\n");
}

void Pagina::PorLista()
{
    Por("<nav id=\"lista\" aria-label=\"Receitas\"><ul>\n");
    for (const ReceitaDoLivro &r : m_saida.receitas) {
        const QByteArray numero = QByteArray::number(r.numero);
        const QString resumo = Resumo(r.receita);
        Por("<li" + (m_temFigura.value(r.numero) ? " data-r=\"" + numero + "\"" : QByteArray()) + "><a href=\"#r" + numero +
            "\"><span><b>" + Html(r.receita.Nome) + "</b>" +
            (resumo.isEmpty() ? QByteArray() : "<span class=\"fraco\">" + Html(resumo) + "</span>") + "</span></a></li>\n");
    }
    Por("</ul></nav>\n<section id=\"compras\" aria-label=\"Lista de compras\" hidden></section>\n");
}

void Pagina::PorReceita(const ReceitaDoLivro &r, const QString &src)
{
    const QByteArray numero = QByteArray::number(r.numero);
    // With scripts this is text until the recipe is opened; without them it is the recipe.
    Por("<noscript id=\"n" + numero + "\">\n<article id=\"r" + numero + "\" aria-labelledby=\"t" + numero + "\">\n<h2 id=\"t" + numero + "\">" + Html(r.receita.Nome) +
        "</h2>\n");
    if (const QString dados = DadosDaReceita(r.receita); !dados.isEmpty())
        Por("<p class=\"fraco\">" + Html(dados) + "</p>\n");
    if (!src.isEmpty())
        Por("<img class=\"foto-grande\" loading=\"lazy\" decoding=\"async\" id=\"figura-" + numero + "\" src=\"" + src.toUtf8() + "\" alt=\"" +
            Html(r.receita.Nome) + "\">\n");
    Por("<h3>Ingredientes</h3>\n<ul class=\"ingredientes\">\n");
    for (const Linha &linha : r.receita.Ingredientes)
        Por((ETitulo(linha) ? QByteArray("<li class=\"grupo\">") : QByteArray("<li>")) + Html(TextoDaLinha(linha)) + "</li>\n");
    Por("</ul>\n<h3>Modo de preparar</h3>\n<ol class=\"modo\">\n");
    for (const QString &paragrafo : Paragrafos(r.receita.Modo))
        Por((paragrafo.endsWith(u':') && paragrafo.size() < 60 ? QByteArray("<li class=\"grupo\">") : QByteArray("<li>")) +
            Html(paragrafo) + "</li>\n");
    Por("</ol>\n");
    if (!r.receita.Observacao.isEmpty()) {
        Por("<h3>Observações</h3>\n");
        for (const QString &paragrafo : Paragrafos(r.receita.Observacao))
            Por("<p>" + Html(paragrafo) + "</p>\n");
    }
    Por("<p class=\"so-texto\"><a href=\"#lista\">Voltar à lista</a></p>\n</article>\n</noscript>\n");
}

QString Pagina::PorReceitas()
{
    for (const ReceitaDoLivro &r : m_saida.receitas) {
        QString erro;
        const QString src = Src(r, erro);
        if (!erro.isEmpty())
            return erro;
        PorReceita(r, src);
    }
    Por("<div id=\"receitas\"></div>\n</main>\n<dialog id=\"cozinha\" aria-label=\"Cozinhar, um passo de cada vez\">\n"
        "<div class=\"barra\"><button type=\"button\" class=\"fechar\">Fechar</button>"
        "<span class=\"conta\" role=\"status\"></span></div>\n"
        "<progress value=\"0\" max=\"1\" aria-label=\"Quanto já foi feito\"></progress>\n<div class=\"cartao\"></div>\n"
        "<div class=\"pe\"><button type=\"button\" class=\"antes\">Anterior</button>"
        "<button type=\"button\" class=\"depois forte\">Próximo</button></div>\n</dialog>\n"
        "<div id=\"relogios\" role=\"group\" aria-label=\"Tempos marcados\"></div>\n"
        "<div id=\"voz\" class=\"pular\" role=\"status\" aria-live=\"polite\"></div>\n");
    return {};
}

void Pagina::PorDados()
{
    // Readers of pages do not take a script of any length.
    constexpr int kPorBloco = 1000;
    int noBloco = 0;
    QStringList tipos;
    for (const ReceitaDoLivro &r : m_saida.receitas) {
        QJsonObject objeto = ParaSchema(r.receita);
        objeto["@id"] = "#r" + QString::number(r.numero);
        objeto[kChaveNossa] = ChaveNossa(r.receita);
        if (m_temFigura.value(r.numero))
            objeto["image"] = "#figura-" + QString::number(r.numero);
        if (noBloco == kPorBloco) {
            Por("\n]</script>\n");
            noBloco = 0;
        }
        Por((noBloco == 0 ? "<script type=\"application/ld+json\">[\n" : ",\n") + JsonNaPagina(QJsonDocument(objeto)));
        ++noBloco;
        if (!r.receita.Classificacao.isEmpty() && !tipos.contains(r.receita.Classificacao))
            tipos += r.receita.Classificacao;
    }
    std::sort(tipos.begin(), tipos.end(), [](const QString &a, const QString &b) { return Ordem::Comparar(a, b) < 0; });
    if (noBloco > 0)
        Por("\n]</script>\n");
    Por("<script type=\"application/json\" id=\"tipos\">" +
        JsonNaPagina(QJsonDocument(QJsonArray::fromStringList(tipos))) + "</script>\n");
    QJsonObject plurais;
    for (const auto &[um, varios] : Palavras::Da().Plurais())
        plurais[um] = varios;
    Por("<script type=\"application/json\" id=\"plurais\">" + JsonNaPagina(QJsonDocument(plurais)) + "</script>\n<script>\n");
    Por(Recurso("livro.js"));
    Por("</script>\n</body>\n</html>\n");
}

QString Pagina::Gravar()
{
    if (const QString erro = EscolherLugarDasFiguras(); !erro.isEmpty())
        return erro;
    if (!m_arquivo.open(QIODevice::WriteOnly))
        return "Não foi possível gravar " + m_destino + ": " + m_arquivo.errorString();
    PorCabeca();
    PorLista();
    if (const QString erro = PorReceitas(); !erro.isEmpty())
        return erro;
    PorDados();
    if (!m_ok || !m_arquivo.flush() || !m_arquivo.commit())
        return "Não foi possível gravar " + m_destino + ": " + m_arquivo.errorString();
    return {};
}
} // namespace

QString Formatos::GravarPagina(const Saida &saida, const QString &destino, const QString &figuras, Relato &relato)
{
    return Pagina(saida, destino, figuras, relato).Gravar();
}
