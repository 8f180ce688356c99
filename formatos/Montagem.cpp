#include "formatos/Rascunho.h"

#include "formatos/Limpeza.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Medidas.h"

#include <QBuffer>
#include <QImageReader>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace
{
using namespace Formatos;

constexpr qsizetype kMaiorNome = 80;
constexpr qsizetype kMaiorTipo = 30;
constexpr qsizetype kMaiorPreparo = 20;
constexpr qsizetype kMaiorOrigem = 30;
constexpr qsizetype kMaiorQuantidade = 20;
constexpr qsizetype kMaiorUnidade = 20;
constexpr qsizetype kMaiorIngrediente = 40;
constexpr qsizetype kMaiorTexto = 900'000; ///< of method and of remarks; the import refuses very large values
constexpr qsizetype kMaisLinhas = 5000;
constexpr qsizetype kMaisPassos = 20'000;
constexpr qsizetype kMaiorFigura = 32 * 1024 * 1024;
constexpr auto kSemModo = "(sem modo de preparo na origem)";

/// Without what a cut leaves hanging.
QString SemPontas(QString texto)
{
    while (!texto.isEmpty() && QStringView(u" ,;-–").contains(texto.back()))
        texto.chop(1);
    return texto;
}

QString CortarNoBranco(const QString &texto, qsizetype limite)
{
    const qsizetype branco = texto.lastIndexOf(u' ', limite);
    QString curto = SemPontas(texto.first(branco > 0 ? branco : limite));
    return curto.isEmpty() ? texto.first(limite) : curto;
}

QString CortarIngrediente(const QString &texto)
{
    qsizetype corte = -1;
    int abertos = 0;
    for (qsizetype i = 0; i < kMaiorIngrediente && i < texto.size(); ++i) {
        const QStringView resto = QStringView(texto).sliced(i);
        if (abertos == 0 && i > 0 &&
            (resto.startsWith(u" (") || resto.startsWith(u", ") || resto.startsWith(u"; ") ||
             resto.startsWith(u" - ") || resto.startsWith(u" – ")))
            corte = i;
        if (texto[i] == u'(')
            ++abertos;
        else if (texto[i] == u')' && abertos > 0)
            --abertos;
    }
    if (corte > 0)
        if (const QString curto = SemPontas(texto.first(corte)); !curto.isEmpty())
            return curto;
    return CortarNoBranco(texto, kMaiorIngrediente);
}

bool EUrl(const QString &texto)
{
    static const QRegularExpression url(R"(^https?://\S+$)", QRegularExpression::CaseInsensitiveOption);
    return url.match(texto).hasMatch();
}

QString HostDe(const QString &url)
{
    QString host = QUrl(url).host();
    if (host.startsWith("www."))
        host.remove(0, 4);
    return host;
}

bool EGenerico(const QString &titulo)
{
    static const QRegularExpression passo(R"(^(?:passo|etapa|step)\s*n?[ºo°.]?\s*\d+$)");
    static const QStringList nomes = {"modo de preparo", "modo de fazer", "preparo",  "instrucoes", "ingredientes",
                                      "instructions",    "directions",    "method",   "steps"};
    QString t = Dobrar(titulo);
    while (t.endsWith(u':') || t.endsWith(u'.'))
        t = t.chopped(1).trimmed();
    return nomes.contains(t) || passo.match(t).hasMatch();
}

bool ETipo(const QString &texto)
{
    static const QRegularExpression numero(R"(^[\d.,]+$)");
    return !texto.isEmpty() && texto != "true" && texto != "false" && !numero.match(texto).hasMatch();
}

/// One draft on its way to a recipe.
class Montagem
{
public:
    Montagem(const Rascunho &rascunho, Relato &relato)
        : m_rascunho(rascunho)
        , m_relato(relato)
    {
    }

    std::optional<Receita> Montar();

private:
    QString Linha1(const QString &texto);
    QStringList Paragrafos(const QString &texto);
    /// For every field but method and remarks.
    static QString DeCampo(QString texto);
    /// For method and remarks.
    static QString DeMemo(QString texto);
    static void Proteger(QString &texto);

    QString Curto(const QString &texto, qsizetype limite, const QString &rotulo);
    void MontarTipo();
    void MontarTempo();
    void MontarCalorias();
    void MontarOrigem();
    void MontarLinhas();
    void AcrescentarLinha(const Linha &linha);
    void MontarModo();
    void MontarFigura();
    void MontarObservacao();
    void ContarPerdidos();

    const Rascunho &m_rascunho;
    Relato &m_relato;
    Receita m_receita;
    int m_perdidos = 0;
    Rendimento m_rendimento;
    QString m_tempos, m_calorias, m_nutricao, m_url, m_autor;
    QStringList m_categorias;
    QStringList m_cortes;
    QStringList m_porExtenso;
};

QString Montagem::Linha1(const QString &texto)
{
    QString limpo = ParaWindows1252(LimparLinha(texto), m_perdidos);
    if (m_rascunho.markdown && !limpo.isEmpty() && (limpo.contains(u'*') || limpo.contains(u'_') || limpo.contains(u'`')))
        limpo = SemMarkdown(limpo);
    return limpo;
}

QStringList Montagem::Paragrafos(const QString &texto)
{
    QStringList paragrafos;
    for (const QString &linha : Linhas(ParaWindows1252(Limpar(texto), m_perdidos))) {
        const QString limpa = m_rascunho.markdown ? SemMarkdown(linha) : linha;
        if (!limpa.isEmpty())
            paragrafos += limpa;
    }
    return paragrafos;
}

void Montagem::Proteger(QString &texto)
{
    if (texto.contains(u'<')) {
        for (qsizetype i = 0; i + 1 < texto.size(); ++i) {
            const QChar depois = texto[i + 1];
            if (texto[i] == u'<' && (depois == u'/' || (depois >= u'a' && depois <= u'z') ||
                                     (depois >= u'A' && depois <= u'Z')))
                texto[i] = QChar(0x2039);
        }
    }
    if (texto.contains(u'\\'))
        texto.replace("\\VG/", "\\ VG/");
}

QString Montagem::DeCampo(QString texto)
{
    texto.replace(u'\'', QChar(0x2019));
    Proteger(texto);
    return texto.trimmed();
}

QString Montagem::DeMemo(QString texto)
{
    Proteger(texto);
    return texto;
}

QString Montagem::Curto(const QString &texto, qsizetype limite, const QString &rotulo)
{
    if (texto.size() <= limite)
        return texto;
    const QString curto = CortarNoBranco(texto, limite);
    if (!rotulo.isEmpty())
        m_cortes += rotulo + ": " + texto;
    m_relato.Avisar((rotulo.isEmpty() ? QString("Tipo") : rotulo) + " com mais de " + QString::number(limite) +
                    " caracteres: ficou \"" + curto + "\", o texto inteiro está nas observações.");
    return curto;
}

void Montagem::MontarTipo()
{
    QStringList nomes;
    for (const QString &tipo : m_rascunho.tipos) {
        if (m_rascunho.tiposNumTexto && m_rascunho.tipos.size() == 1) {
            for (const QString &parte : Linha1(tipo).split(u','))
                nomes += parte.trimmed();
        } else {
            nomes += Linha1(tipo);
        }
    }
    for (const QString &outra : m_rascunho.outrasCategorias)
        nomes += Linha1(outra);
    QStringList dados;
    for (const QString &nome : nomes)
        if (ETipo(nome) && !dados.contains(nome, Qt::CaseInsensitive))
            dados += nome;
    const bool soOutras = m_rascunho.tipos.isEmpty();
    if (dados.isEmpty())
        return;
    if (!soOutras) {
        const QString tipo = dados.takeFirst();
        m_receita.Classificacao = Curto(tipo, kMaiorTipo, {});
        if (m_receita.Classificacao != tipo)
            m_categorias += tipo;
    }
    m_categorias += dados;
}

void Montagem::MontarTempo()
{
    const QString total = Linha1(m_rascunho.tempoTotal);
    const QString preparo = Linha1(m_rascunho.tempoPreparo);
    const QString cozimento = Linha1(m_rascunho.tempoCozimento);
    const QString casaPreparo = TempoDaCasa(preparo);
    const QString casaCozimento = TempoDaCasa(cozimento);
    QString tempo = TempoDaCasa(total);
    if (tempo.isEmpty()) {
        const std::optional<double> a = MinutosDoTexto(preparo);
        const std::optional<double> b = MinutosDoTexto(cozimento);
        if (a && b)
            tempo = TextoDosMinutos(*a + *b);
        else
            tempo = casaPreparo.isEmpty() || casaCozimento.isEmpty() ? casaPreparo + casaCozimento
                                                                     : casaPreparo + " + " + casaCozimento;
    }
    m_receita.Preparo = Curto(tempo, kMaiorPreparo, "Tempo de preparo");
    if (!casaPreparo.isEmpty() && !casaCozimento.isEmpty())
        m_tempos = "Tempos: preparo " + casaPreparo + ", cozimento " + casaCozimento;
}

void Montagem::MontarCalorias()
{
    static const QRegularExpression cemGramas(R"(^100\s*(?:g|gr|gramas?|grams?|ml|mililitros?)\.?$)",
                                              QRegularExpression::CaseInsensitiveOption);
    const QString texto = Linha1(m_rascunho.calorias);
    const QString porcao = Linha1(m_rascunho.porcaoDasCalorias);
    if (!texto.isEmpty()) {
        const Calorias calorias = CaloriasDe(texto, m_rascunho.tipoDasCalorias);
        static const QRegularExpression zero(R"(^0+([.,]0+)?\s*(k?cal\w*)?$)");
        if (cemGramas.match(porcao).hasMatch()) {
            m_calorias = "Calorias: " + texto + " em " + porcao;
        } else if (!calorias.numero.isEmpty()) {
            m_receita.Calorias = calorias.numero;
            m_receita.Tipo_Calorias = calorias.tipo;
        } else if (!zero.match(texto).hasMatch()) {
            m_calorias = "Calorias: " + texto;
        }
    }
    QStringList nutrientes;
    for (const QString &nutriente : m_rascunho.nutrientes)
        if (const QString limpo = Linha1(nutriente); !limpo.isEmpty())
            nutrientes += limpo;
    if (!nutrientes.isEmpty())
        m_nutricao = "Informação nutricional: " + nutrientes.join(", ");
}

void Montagem::MontarOrigem()
{
    m_url = Linha1(m_rascunho.url);
    QString origem;
    for (const QString &fonte : m_rascunho.fontes) {
        const QString limpa = Linha1(fonte);
        if (limpa.isEmpty())
            continue;
        if (EUrl(limpa)) {
            if (m_url.isEmpty())
                m_url = limpa;
            continue;
        }
        origem = limpa;
        break;
    }
    const QString autor = Linha1(m_rascunho.autor);
    if (origem.isEmpty())
        origem = HostDe(m_url);
    if (origem.isEmpty())
        origem = autor;
    else if (autor != origem)
        m_autor = autor;
    m_receita.Origem = Curto(origem, kMaiorOrigem, "Origem");
}

void Montagem::AcrescentarLinha(const Linha &dada)
{
    if (m_receita.Ingredientes.size() >= kMaisLinhas)
        return;
    Linha linha{DeCampo(dada.Ingrediente), DeCampo(FracoesPorExtenso(dada.Quantidade)), DeCampo(dada.Unidade)};
    if (linha.Ingrediente.isEmpty()) {
        if (linha.Quantidade.isEmpty() && linha.Unidade.isEmpty())
            return;
        // A line always names something.
        linha = {(linha.Quantidade + u' ' + linha.Unidade).trimmed(), {}, {}};
    }
    const Linha inteira = linha;
    if (linha.Unidade.size() > kMaiorUnidade) {
        linha.Ingrediente.prepend(linha.Unidade + u' ');
        linha.Unidade.clear();
    }
    if (linha.Quantidade.size() > kMaiorQuantidade) {
        linha.Ingrediente.prepend(linha.Quantidade + u' ' + (linha.Unidade.isEmpty() ? "" : linha.Unidade + u' '));
        linha.Quantidade.clear();
        linha.Unidade.clear();
    }
    if (linha.Ingrediente.size() > kMaiorIngrediente) {
        m_porExtenso += "- " + TextoDaLinha(inteira);
        linha.Ingrediente = CortarIngrediente(linha.Ingrediente);
        m_relato.Avisar("Ingrediente com mais de " + QString::number(kMaiorIngrediente) + " caracteres: ficou \"" +
                        linha.Ingrediente + "\", a linha inteira está nas observações.");
    }
    m_receita.Ingredientes.append(linha);
}

void Montagem::MontarLinhas()
{
    const auto doTexto = [&](const QString &texto) {
        for (const QString &bruta : Linhas(ParaWindows1252(Limpar(texto), m_perdidos))) {
            // Section 4 reads headings and bullets itself; emphasis and links are Markdown's.
            const QString linha = m_rascunho.markdown && (bruta.contains(u'*') || bruta.contains(u"](") || bruta.contains(u'_'))
                                      ? SemMarkdown(bruta)
                                      : bruta;
            const QString limpa = TituloDaLinha(LimparItem(linha));
            if (m_receita.Ingredientes.size() >= kMaisLinhas)
                return;
            const qsizetype antes = m_porExtenso.size();
            AcrescentarLinha(SepararLinha(limpa));
            // The whole line as it was, when it is known.
            if (m_porExtenso.size() > antes)
                m_porExtenso.last() = "- " + limpa;
        }
    };
    for (const LinhaLida &lida : m_rascunho.linhas) {
        switch (lida.tipo) {
        case LinhaLida::Tipo::Texto:
            doTexto(lida.texto);
            break;
        case LinhaLida::Tipo::Titulo: {
            QString titulo = Linha1(lida.texto);
            while (titulo.endsWith(u':'))
                titulo = titulo.chopped(1).trimmed();
            if (!titulo.isEmpty())
                AcrescentarLinha({titulo + u':', {}, {}});
            break;
        }
        case LinhaLida::Tipo::Partes: {
            const QString quantidade = QuantidadeDada(Linha1(lida.quantidade));
            const QString unidade = Linha1(lida.unidade);
            QString ingrediente = LimparItem(Linha1(lida.ingrediente));
            if (const QString nota = Linha1(lida.observacao); !nota.isEmpty())
                ingrediente += (ingrediente.isEmpty() ? "" : ", ") + nota;
            if (lida.opcional)
                ingrediente += " (opcional)";
            if (quantidade.isEmpty() && unidade.isEmpty())
                doTexto(ingrediente);
            else
                AcrescentarLinha({ingrediente, quantidade, unidade});
            break;
        }
        }
    }
    if (m_receita.Ingredientes.size() >= kMaisLinhas)
        m_relato.Avisar("Mais de " + QString::number(kMaisLinhas) + " ingredientes: os outros não foram lidos.");
}

void Montagem::MontarModo()
{
    QStringList modo;
    QString ultimoTitulo;
    for (const PassoLido &passo : m_rascunho.passos) {
        if (modo.size() > kMaisPassos)
            break;
        QString titulo = Linha1(passo.titulo);
        QStringList texto = Paragrafos(passo.texto);
        if (!titulo.isEmpty()) {
            QString nome = titulo;
            while (nome.endsWith(u':') || nome.endsWith(u'.') || nome.endsWith(u'…'))
                nome = nome.chopped(1).trimmed();
            const bool repetido = !texto.isEmpty() && !nome.isEmpty() &&
                                  texto.first().startsWith(nome, Qt::CaseInsensitive);
            if (EGenerico(titulo) || repetido || nome.isEmpty() || nome == ultimoTitulo) {
                // says nothing
            } else if (texto.isEmpty() && !passo.texto.isNull()) {
                texto += titulo; // a step with a name only
            } else {
                modo += nome + u':';
                ultimoTitulo = nome;
            }
        }
        for (const QString &paragrafo : texto)
            if (!EGenerico(paragrafo))
                modo += paragrafo;
    }
    m_receita.Modo = DeMemo(modo.join("\r\n"));
    if (m_receita.Modo.size() > kMaiorTexto) {
        m_receita.Modo.truncate(kMaiorTexto);
        m_relato.Avisar("Modo de preparo grande demais: só o começo foi lido.");
    }
}

void Montagem::MontarFigura()
{
    if (m_rascunho.figura.isEmpty())
        return;
    if (m_rascunho.figura.size() > kMaiorFigura) {
        m_relato.FaltaFigura("Figura grande demais: deixada de fora.");
    } else if (!FormatoDaFigura(m_rascunho.figura).isEmpty()) {
        m_receita.Figura = "F0000001.img";
        m_receita.DadosFigura = m_rascunho.figura;
    } else if (const QString estranha = FiguraEstranha(m_rascunho.figura); !estranha.isEmpty()) {
        QByteArray bytes = m_rascunho.figura;
        QBuffer buffer(&bytes);
        QImage imagem;
        if (QImageReader leitor(&buffer); leitor.read(&imagem)) {
            QBuffer saida(&m_receita.DadosFigura);
            imagem.save(&saida, imagem.hasAlphaChannel() ? "PNG" : "JPEG");
        }
        if (m_receita.DadosFigura.isEmpty())
            m_relato.FaltaFigura("Figura em formato " + estranha + ", que o livro não mostra: deixada de fora.");
        else
            m_receita.Figura = "F0000001.img";
    } else {
        m_relato.FaltaFigura("Figura em formato desconhecido: deixada de fora.");
    }
}

void Montagem::MontarObservacao()
{
    QStringList paragrafos;
    for (const QString &descricao : m_rascunho.descricao)
        paragrafos += Paragrafos(descricao);
    for (const QString &nota : m_rascunho.notas)
        paragrafos += Paragrafos(nota);
    const auto com = [&](const QString &rotulo, const QString &texto) {
        if (!texto.isEmpty())
            paragrafos += rotulo + ": " + texto;
    };
    com("Rendimento", m_rendimento.texto);
    if (!m_tempos.isEmpty())
        paragrafos += m_tempos;
    if (!m_calorias.isEmpty())
        paragrafos += m_calorias;
    com("Dificuldade", Linha1(m_rascunho.dificuldade));
    QStringList utensilios;
    for (const QString &utensilio : m_rascunho.utensilios)
        if (const QString limpo = Linha1(utensilio); !limpo.isEmpty())
            utensilios += limpo;
    com("Utensílios", utensilios.join(", "));
    if (!m_nutricao.isEmpty())
        paragrafos += m_nutricao;
    com("Categorias", m_categorias.join(", "));
    com("Autor", m_autor);
    paragrafos += m_cortes;
    com("Fonte", m_url);
    if (!m_porExtenso.isEmpty()) {
        paragrafos += "Ingredientes por extenso:";
        paragrafos += m_porExtenso;
    }
    m_receita.Observacao = DeMemo(paragrafos.join("\r\n"));
    if (m_receita.Observacao.size() > kMaiorTexto) {
        m_receita.Observacao.truncate(kMaiorTexto);
        m_relato.Avisar("Observações grandes demais: só o começo foi lido.");
    }
}

void Montagem::ContarPerdidos()
{
    if (m_perdidos == 0)
        return;
    m_relato.ContarSubstituidos(m_perdidos);
    m_relato.Avisar(QString::number(m_perdidos) +
                    (m_perdidos == 1 ? " trecho em letras que o livro não tem ficou como \"?\"."
                                     : " trechos em letras que o livro não tem ficaram como \"?\"."));
}

std::optional<Receita> Montagem::Montar()
{
    const QString nome = Linha1(m_rascunho.nome);
    m_relato.DefinirReceita(nome);
    if (nome.isEmpty()) {
        m_relato.Pular("não tem nome.");
        return std::nullopt;
    }
    MontarLinhas();
    MontarModo();
    if (m_receita.Ingredientes.isEmpty() && m_receita.Modo.isEmpty()) {
        m_relato.Pular("não tem ingredientes nem modo de preparo.");
        return std::nullopt;
    }
    if (m_receita.Modo.isEmpty())
        m_receita.Modo = kSemModo;
    m_receita.Nome = DeCampo(Curto(nome, kMaiorNome, "Nome"));
    MontarTipo();
    m_rendimento = RendimentoDe([&] {
        QStringList limpos;
        for (const QString &texto : m_rascunho.rendimento)
            limpos += Linha1(texto);
        return limpos;
    }());
    m_receita.Porcoes = m_rendimento.porcoes;
    MontarTempo();
    MontarCalorias();
    MontarOrigem();
    MontarFigura();
    MontarObservacao();
    m_receita.Classificacao = DeCampo(m_receita.Classificacao);
    m_receita.Preparo = DeCampo(m_receita.Preparo);
    m_receita.Origem = DeCampo(m_receita.Origem);
    ContarPerdidos();
    return m_receita;
}
} // namespace

QString Formatos::FormatoDaFigura(const QByteArray &bytes)
{
    if (bytes.startsWith("\xFF\xD8\xFF"))
        return "JPEG";
    if (bytes.startsWith("\x89PNG\r\n\x1A\n"))
        return "PNG";
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a"))
        return "GIF";
    if (bytes.startsWith("BM") && bytes.size() > 26)
        return "BMP";
    return {};
}

QString Formatos::FiguraEstranha(const QByteArray &bytes)
{
    if (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WEBP")
        return "WEBP";
    if (bytes.mid(4, 4) == "ftyp")
        return bytes.mid(8, 4).startsWith("avi") ? "AVIF" : "HEIC";
    if (bytes.startsWith("II*") || bytes.startsWith(QByteArrayView("MM\0*", 4)))
        return "TIFF";
    if (bytes.first(std::min<qsizetype>(bytes.size(), 512)).contains("<svg"))
        return "SVG";
    return {};
}

std::optional<Receita> Formatos::Montar(const Rascunho &rascunho, Relato &relato)
{
    return Montagem(rascunho, relato).Montar();
}
