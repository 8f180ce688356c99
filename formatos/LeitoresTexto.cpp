// Plain text with a little structure: tables, Cooklang, RecipeMD, and our own package.

#include "formatos/Entrada.h"
#include "formatos/Limpeza.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Rascunho.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/TextoDoPacote.h"

#include <QBuffer>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <utility>

namespace
{
using namespace Formatos;

void Guardar(const Rascunho &rascunho, Relato &relato, QList<Receita> &receitas)
{
    if (const std::optional<Receita> receita = Montar(rascunho, relato))
        receitas += *receita;
}

// ---- CSV ----------------------------------------------------------------------------------------------------

constexpr qsizetype kMaisColunas = 1000;
constexpr qsizetype kMaisFileiras = 300'000;

QList<QStringList> Celulas(const QString &texto, QChar separador)
{
    QList<QStringList> fileiras;
    QStringList fileira;
    QString celula;
    bool aspas = false;
    bool comAspas = false;
    const auto fecharCelula = [&] {
        if (fileira.size() < kMaisColunas)
            fileira += celula;
        celula.clear();
        comAspas = false;
    };
    const auto fecharFileira = [&] {
        fecharCelula();
        fileiras += fileira;
        fileira.clear();
    };
    for (qsizetype i = 0; i < texto.size() && fileiras.size() < kMaisFileiras; ++i) {
        const QChar c = texto[i];
        if (aspas) {
            if (c == u'"' && i + 1 < texto.size() && texto[i + 1] == u'"') {
                celula += c;
                ++i;
            } else if (c == u'"') {
                aspas = false;
            } else {
                celula += c;
            }
        } else if (c == u'"' && celula.trimmed().isEmpty() && !comAspas) {
            celula.clear();
            aspas = true;
            comAspas = true;
        } else if (c == separador) {
            fecharCelula();
        } else if (c == u'\n') {
            fecharFileira();
        } else {
            celula += c;
        }
    }
    if (!celula.isEmpty() || !fileira.isEmpty())
        fecharFileira();
    return fileiras;
}

enum class Coluna {
    Nenhuma, Nome, Tipo, Porcoes, Tempo, TempoPreparo, TempoCozimento, Calorias, Base, Ingredientes, Modo, Notas, Origem, Url
};

Coluna ColunaDe(const QString &titulo)
{
    static const QHash<QString, Coluna> nomes = [] {
        QHash<QString, Coluna> n;
        const auto por = [&](Coluna coluna, const QStringList &titulos) {
            for (const QString &t : titulos)
                n.insert(Dobrar(t), coluna);
        };
        por(Coluna::Nome, {"nome", "título", "receita", "title", "name"});
        por(Coluna::Tipo, {"tipo", "categoria", "category", "categories", "course"});
        por(Coluna::Porcoes, {"porções", "rendimento", "rende", "servings", "serves", "yield", "quantity"});
        por(Coluna::Tempo, {"tempo", "tempo de preparo", "tempo total", "total time", "totaltime"});
        por(Coluna::TempoPreparo, {"prep time", "preparationtime", "preparation time"});
        por(Coluna::TempoCozimento, {"cook time", "cookingtime", "cooking time", "tempo de cozimento"});
        por(Coluna::Calorias, {"calorias", "calories", "kcal"});
        por(Coluna::Base, {"base das calorias"});
        por(Coluna::Ingredientes, {"ingredientes", "ingredients"});
        por(Coluna::Modo, {"modo de preparo", "modo de fazer", "modo", "preparo", "instruções", "directions",
                           "instructions", "steps", "method"});
        por(Coluna::Notas, {"observações", "obs", "notas", "notes", "description"});
        por(Coluna::Origem, {"origem", "fonte", "autor", "source", "author"});
        por(Coluna::Url, {"url", "link", "site", "originalurl"});
        return n;
    }();
    return nomes.value(Dobrar(titulo), Coluna::Nenhuma);
}

QChar SeparadorDe(const QString &linha)
{
    QChar melhor = u';';
    qsizetype mais = -1;
    for (const QChar c : {u';', u',', u'\t'})
        if (const qsizetype quantos = linha.count(c); quantos > mais) {
            mais = quantos;
            melhor = c;
        }
    return melhor;
}

QList<Coluna> Cabecalho(const QString &texto)
{
    const QString linha = texto.left(texto.indexOf(u'\n') < 0 ? texto.size() : texto.indexOf(u'\n'));
    QList<Coluna> colunas;
    const QList<QStringList> fileiras = Celulas(linha.left(10'000), SeparadorDe(linha));
    for (const QString &titulo : fileiras.value(0))
        colunas += ColunaDe(titulo);
    return colunas;
}

Rascunho LerFileira(const QStringList &fileira, const QList<Coluna> &colunas)
{
    Rascunho r;
    r.tiposNumTexto = true;
    bool temTempo = false;
    for (qsizetype i = 0; i < std::min(fileira.size(), colunas.size()); ++i) {
        const QString valor = fileira[i].trimmed();
        if (valor.isEmpty())
            continue;
        switch (colunas[i]) {
        case Coluna::Nenhuma: break;
        case Coluna::Nome:
            if (r.nome.isEmpty())
                r.nome = valor;
            break;
        case Coluna::Tipo:
            r.tipos += valor;
            break;
        case Coluna::Porcoes:
            r.rendimento += valor;
            break;
        case Coluna::Tempo:
            if (!std::exchange(temTempo, true))
                r.tempoTotal = valor;
            break;
        case Coluna::TempoPreparo:
            r.tempoPreparo = valor;
            break;
        case Coluna::TempoCozimento:
            r.tempoCozimento = valor;
            break;
        case Coluna::Calorias:
            r.calorias = valor;
            break;
        case Coluna::Base: {
            const QString base = Dobrar(valor);
            if (base.startsWith(u'r') || base.contains("receita") || base.contains("total"))
                r.tipoDasCalorias = "R";
            else if (base.startsWith("nenhuma") || base == "-")
                r.tipoDasCalorias.clear();
            break;
        }
        case Coluna::Ingredientes:
            for (const QString &linha : QString(valor).replace(u'\r', u'\n').split(u'\n'))
                if (linha.trimmed().startsWith(u','))
                    r.Titulo(linha.trimmed().sliced(1));
                else
                    r.Texto(linha);
            break;
        case Coluna::Modo:
            r.passos += PassoLido{{}, valor};
            break;
        case Coluna::Notas:
            r.notas += valor;
            break;
        case Coluna::Origem:
            if (r.fontes.isEmpty())
                r.fontes += valor;
            else
                r.autor = valor;
            break;
        case Coluna::Url:
            if (r.url.isEmpty())
                r.url = valor;
            break;
        }
    }
    return r;
}

// ---- Cooklang -----------------------------------------------------------------------------------------------

/// The keys of a front matter, folded; of a list its elements.
using Metadados = QHash<QString, QStringList>;

QString SemAspas(QString valor)
{
    valor = valor.trimmed();
    if (valor.size() >= 2 && ((valor.startsWith(u'"') && valor.endsWith(u'"')) ||
                              (valor.startsWith(u'\'') && valor.endsWith(u'\''))))
    {
        const bool simples = valor.startsWith(u'\'');
        valor = valor.sliced(1, valor.size() - 2);
        if (simples)
            valor.replace("''", "'");
    }
    return valor;
}

void LerYaml(const QStringList &linhas, Metadados &dados)
{
    QString chave;
    bool bloco = false;
    for (const QString &linha : linhas) {
        const QString limpa = linha.trimmed();
        if (bloco && linha.startsWith(u' ') && !limpa.isEmpty()) {
            QStringList &textos = dados[chave];
            if (textos.isEmpty())
                textos += limpa;
            else
                textos.last() += u'\n' + limpa;
            continue;
        }
        if (limpa.isEmpty() || limpa.startsWith(u'#'))
            continue;
        if (limpa.startsWith("- ") && !chave.isEmpty()) {
            dados[chave] += SemAspas(limpa.sliced(2));
            continue;
        }
        const qsizetype dois = limpa.indexOf(u':');
        if (dois <= 0)
            continue;
        QString nome = Dobrar(SemAspas(limpa.first(dois)));
        // Nested keys keep the name of what they belong to: "time:" with "prep:" below.
        if (linha.startsWith(u' ') && !chave.isEmpty())
            nome = chave.section(u'.', 0, 0) + u'.' + nome;
        chave = nome;
        const QString valor = limpa.sliced(dois + 1).trimmed();
        bloco = valor == "|" || valor == ">" || valor == "|-" || valor == ">-";
        if (valor.startsWith(u'[') && valor.endsWith(u']')) {
            for (const QString &parte : valor.sliced(1, valor.size() - 2).split(u','))
                dados[chave] += SemAspas(parte);
        } else if (!bloco && !valor.isEmpty()) {
            dados[chave] += SemAspas(valor);
        }
    }
}

class LeitorCooklang
{
public:
    std::optional<Receita> Ler(const Entrada &entrada, Relato &relato);

private:
    void LerMetadados();
    void FecharPassos(const QStringList &linhas);
    QString LerPasso(const QString &texto);
    void AcrescentarIngrediente(const QString &nome, const QString &medida, const QString &preparo);

    Metadados m_dados;
    Rascunho m_r;
    QString m_secao;
    QSet<QString> m_vistos;
};

void LeitorCooklang::AcrescentarIngrediente(const QString &nomeBruto, const QString &medidaBruta, const QString &preparo)
{
    const QString nome = nomeBruto.trimmed();
    QString medida = medidaBruta.trimmed();
    if (medida.startsWith(u'='))
        medida = medida.sliced(1).trimmed();
    const QString chave = Dobrar(nome);
    if (medida.isEmpty() && m_vistos.contains(chave))
        return;
    m_vistos.insert(chave);
    if (!m_secao.isEmpty())
        m_r.Titulo(std::exchange(m_secao, QString()));
    LinhaLida linha;
    linha.tipo = LinhaLida::Tipo::Partes;
    const qsizetype por = medida.indexOf(u'%');
    linha.quantidade = (por < 0 ? medida : medida.first(por)).trimmed();
    linha.unidade = por < 0 ? QString() : medida.sliced(por + 1).trimmed();
    linha.ingrediente = nome;
    linha.observacao = preparo.trimmed();
    m_r.linhas += linha;
}

/// Where `sinal` stands from `inicio` on, not too far away; -1 when it does not.
qsizetype PertoDe(const QString &texto, QChar sinal, qsizetype inicio)
{
    constexpr qsizetype kLonge = 500;
    const qsizetype achado = QStringView(texto).sliced(inicio, std::min(kLonge, texto.size() - inicio)).indexOf(sinal);
    return achado < 0 ? -1 : inicio + achado;
}

/// The text without "[- comments -]".
QString SemComentarios(const QString &texto)
{
    QString saida;
    qsizetype i = 0;
    for (qsizetype inicio = texto.indexOf("[-"); inicio >= 0; inicio = texto.indexOf("[-", i)) {
        const qsizetype fim = texto.indexOf("-]", inicio + 2);
        if (fim < 0)
            break;
        saida += QStringView(texto).sliced(i, inicio - i);
        i = fim + 2;
    }
    return saida + texto.sliced(i);
}

/// A paragraph: what stands for ingredients, pots and timers becomes their words.
QString LeitorCooklang::LerPasso(const QString &texto)
{
    QString saida;
    for (qsizetype i = 0; i < texto.size();) {
        const QChar c = texto[i];
        const QChar seguinte = i + 1 < texto.size() ? texto[i + 1] : QChar();
        const bool marca = (c == u'@' || c == u'#' || c == u'~') && !seguinte.isSpace() && !seguinte.isNull() &&
                           (seguinte.isLetterOrNumber() || QStringView(u"{&?+-./@~#").contains(seguinte));
        if (!marca) {
            saida += c;
            ++i;
            continue;
        }
        qsizetype inicio = i + 1;
        if (c == u'@')
            while (inicio < texto.size() && QStringView(u"&?+-@").contains(texto[inicio]))
                ++inicio;
        // Several words when a brace closes them before the next mark, else one word.
        qsizetype chave = inicio;
        while (chave < texto.size() && !QStringView(u"{@#~\n").contains(texto[chave]))
            ++chave;
        qsizetype fim = inicio;
        QString medida;
        QString nome;
        bool comChaves = chave < texto.size() && texto[chave] == u'{';
        const qsizetype fecho = comChaves ? PertoDe(texto, u'}', chave) : -1;
        comChaves = comChaves && fecho > 0;
        if (comChaves) {
            nome = texto.sliced(inicio, chave - inicio).trimmed();
            medida = texto.sliced(chave + 1, fecho - chave - 1);
            fim = fecho + 1;
        } else {
            while (fim < texto.size() && (texto[fim].isLetterOrNumber() || texto[fim] == u'-' || texto[fim] == u'_'))
                ++fim;
            nome = texto.sliced(inicio, fim - inicio);
        }
        if (nome.isEmpty() && (c != u'~' || medida.trimmed().isEmpty())) {
            saida += c;
            ++i;
            continue;
        }
        QString preparo;
        if (c == u'@' && comChaves && fim < texto.size() && texto[fim] == u'(') {
            const qsizetype parenteses = PertoDe(texto, u')', fim);
            if (parenteses > 0) {
                preparo = texto.sliced(fim + 1, parenteses - fim - 1);
                fim = parenteses + 1;
            }
        }
        if (c == u'@') {
            if (nome.startsWith("./") || nome.startsWith("../") || nome.contains(u'/'))
                nome = nome.sliced(nome.lastIndexOf(u'/') + 1);
            AcrescentarIngrediente(nome, medida, preparo);
            saida += nome;
        } else if (c == u'#') {
            saida += nome;
        } else {
            saida += medida.trimmed().isEmpty() ? nome : QString(medida).replace(u'%', u' ').simplified();
        }
        i = fim;
    }
    return saida;
}

void LeitorCooklang::FecharPassos(const QStringList &linhas)
{
    QString paragrafo;
    bool quebra = false;
    for (const QString &linha : linhas) {
        QString texto = linha.trimmed();
        if (texto.isEmpty())
            continue;
        if (!paragrafo.isEmpty())
            paragrafo += quebra ? u'\n' : u' ';
        quebra = texto.endsWith(u'\\');
        if (quebra)
            texto = texto.chopped(1).trimmed();
        paragrafo += texto;
    }
    if (!paragrafo.isEmpty())
        m_r.passos += PassoLido{{}, LerPasso(paragrafo)};
}

void LeitorCooklang::LerMetadados()
{
    const auto textos = [&](const QStringList &chaves) {
        for (const QString &chave : chaves)
            if (const QStringList valor = m_dados.value(chave); !valor.isEmpty())
                return valor;
        return QStringList();
    };
    const auto um = [&](const QStringList &chaves) { return textos(chaves).join(", "); };
    m_r.nome = um({"title"});
    m_r.rendimento = textos({"servings", "yield", "serves"});
    m_r.tipos = textos({"course", "category", "categoria", "tipo"});
    m_r.tipos += textos({"tags"});
    if (m_r.tipos.size() == 1)
        m_r.tiposNumTexto = true;
    m_r.fontes = {um({"source", "source.name"})};
    m_r.url = um({"source.url"});
    m_r.autor = um({"author", "source.author"});
    m_r.tempoTotal = um({"time", "duration", "time required"});
    m_r.tempoPreparo = um({"prep time", "time.prep"});
    m_r.tempoCozimento = um({"cook time", "time.cook"});
    m_r.descricao = textos({"introduction", "description"});
    m_r.calorias = um({"calories", "calorias"});
}

std::optional<Receita> LeitorCooklang::Ler(const Entrada &entrada, Relato &relato)
{
    static const QRegularExpression metadado(R"(^>>\s*([^:]+):\s*(.*)$)");
    static const QRegularExpression secao(R"(^=+\s*(.*?)\s*=*$)");
    QString texto = entrada.Texto();
    texto.replace("\r\n", "\n").replace(u'\r', u'\n');
    QStringList linhas = texto.split(u'\n');
    if (!linhas.isEmpty() && linhas.first().trimmed() == "---") {
        qsizetype fim = 1;
        while (fim < linhas.size() && linhas[fim].trimmed() != "---")
            ++fim;
        LerYaml(linhas.mid(1, fim - 1), m_dados);
        linhas = linhas.mid(fim + 1);
    }
    linhas = SemComentarios(linhas.join(u'\n')).split(u'\n');
    QStringList passo;
    QStringList notas;
    const auto fechar = [&] {
        FecharPassos(passo);
        passo.clear();
    };
    for (QString linha : linhas) {
        if (const auto m = metadado.match(linha.trimmed()); m.hasMatch()) {
            m_dados[Dobrar(m.captured(1))] += m.captured(2).trimmed();
            continue;
        }
        if (const qsizetype i = linha.indexOf("--"); i >= 0 && linha.trimmed() != "---" &&
                                                     (i == 0 || linha[i - 1].isSpace()))
            linha.truncate(i);
        const QString limpa = linha.trimmed();
        if (limpa.isEmpty()) {
            fechar();
        } else if (limpa.startsWith(u'>')) {
            fechar();
            notas += limpa.sliced(1).trimmed();
        } else if (limpa.startsWith(u'=')) {
            fechar();
            m_secao = secao.match(limpa).captured(1);
            if (!m_secao.isEmpty())
                m_r.passos += PassoLido{m_secao, {}};
        } else {
            passo += linha;
        }
    }
    fechar();
    LerMetadados();
    m_r.notas = notas;
    const QString base = entrada.nome.sliced(entrada.nome.lastIndexOf(u'/') + 1);
    const QString semFim = base.endsWith(".cook", Qt::CaseInsensitive) ? base.chopped(5) : base;
    if (m_r.nome.trimmed().isEmpty())
        m_r.nome = semFim;
    for (const QString fim : {".jpg", ".png", ".jpeg", ".gif"})
        if (const std::optional<QByteArray> figura = entrada.AoLado(semFim + fim)) {
            m_r.figura = *figura;
            break;
        }
    return Montar(m_r, relato);
}

// ---- RecipeMD -----------------------------------------------------------------------------------------------

bool ERegua(const QString &linha)
{
    static const QRegularExpression regua(R"(^\s{0,3}(?:(?:-\s*){3,}|(?:\*\s*){3,}|(?:_\s*){3,})$)");
    return linha.size() < 200 && regua.match(linha).hasMatch();
}

QString SemEscapes(const QString &texto)
{
    static const QRegularExpression escape(R"(\\([\\`*_{}\[\]()#+\-.!<>~|]))");
    QString saida = texto;
    return saida.replace(escape, "\\1");
}

/// Markdown's marks gone, what was escaped kept: it is hidden meanwhile.
QString TextoDoMarkdown(const QString &texto)
{
    constexpr char16_t kEsconderijo = 0xE000;
    if (!texto.contains(u'\\'))
        return SemMarkdown(texto);
    static const QString escapaveis = "\\`*_{}[]()#+-.!<>~|";
    QString escondido;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        if (texto[i] == u'\\' && i + 1 < texto.size() && escapaveis.contains(texto[i + 1]))
            escondido += QChar(static_cast<char16_t>(kEsconderijo + texto[++i].unicode()));
        else
            escondido += texto[i];
    }
    QString limpo = SemMarkdown(escondido);
    for (QChar &c : limpo)
        if (c.unicode() > kEsconderijo && c.unicode() < kEsconderijo + 0x80)
            c = QChar(static_cast<char16_t>(c.unicode() - kEsconderijo));
    return limpo;
}

/// The amount in emphasis: the first number is the quantity, the rest the unit.
void PorQuantidade(const QString &texto, LinhaLida &linha)
{
    static const QRegularExpression numero(
        R"(^((?:±\s*)?(?:\d+\s+\d+/\d+|\d+\s*[½¼¾⅓⅔⅛]|\d+/\d+|[½¼¾⅓⅔⅛⅜⅝⅞]|\d+(?:[.,]\d+)?)(?:\s*(?:-|–|a|até|ou|x|×)\s*(?:\d+\s+\d+/\d+|\d+/\d+|[½¼¾⅓⅔⅛]|\d+(?:[.,]\d+)?))?)\s*(.*)$)");
    const QRegularExpressionMatch m = numero.match(texto.trimmed());
    if (!m.hasMatch()) {
        linha.quantidade = texto.trimmed();
        return;
    }
    linha.quantidade = m.captured(1).trimmed();
    linha.unidade = m.captured(2).trimmed();
}

class LeitorMarkdown
{
public:
    std::optional<Receita> Ler(const Entrada &entrada, Relato &relato);

private:
    void LerDescricao(const QStringList &linhas, const Entrada &entrada);
    void LerIngredientes(const QStringList &linhas);
    void LerModo(const QStringList &linhas);
    void AcrescentarItem(const QString &item);

    Rascunho m_r;
};

void LeitorMarkdown::LerDescricao(const QStringList &linhas, const Entrada &entrada)
{
    static const QRegularExpression rotulos(R"(^\*([^*]+)\*$)");
    static const QRegularExpression rende(R"(^\*\*([^*]+)\*\*$)");
    static const QRegularExpression figura(R"(^!\[[^\]]*\]\(<?([^)>]+)>?\)$)");
    static const QRegularExpression virgula(R"(,(?!\d)|(?<!\d),)");
    QStringList paragrafo;
    const auto fechar = [&] {
        const QString texto = paragrafo.join(u' ').trimmed();
        paragrafo.clear();
        if (texto.isEmpty())
            return;
        if (const auto m = rende.match(texto); m.hasMatch()) {
            for (const QString &parte : m.captured(1).split(virgula, Qt::SkipEmptyParts))
                m_r.rendimento += SemEscapes(parte.trimmed());
        } else if (const auto n = rotulos.match(texto); n.hasMatch()) {
            for (const QString &parte : n.captured(1).split(virgula, Qt::SkipEmptyParts))
                m_r.tipos += SemEscapes(parte.trimmed());
        } else if (const auto f = figura.match(texto); f.hasMatch()) {
            const QString nome = f.captured(1);
            if (!nome.contains("://"))
                if (const std::optional<QByteArray> bytes =
                        entrada.AoLado(QString::fromUtf8(QByteArray::fromPercentEncoding(nome.toUtf8()))))
                    m_r.figura = *bytes;
        } else {
            m_r.descricao += TextoDoMarkdown(texto);
        }
    };
    for (const QString &linha : linhas) {
        if (linha.trimmed().isEmpty()) {
            fechar();
            continue;
        }
        paragrafo += linha.trimmed();
    }
    fechar();
}

void LeitorMarkdown::AcrescentarItem(const QString &item)
{
    static const QRegularExpression quantia(R"(^\*((?:[^*\\]|\\.)+)\*\s*(.*)$)",
                                            QRegularExpression::DotMatchesEverythingOption);
    const QString texto = item.simplified();
    const QRegularExpressionMatch m = quantia.match(texto);
    if (!m.hasMatch()) {
        LinhaLida linha;
        linha.tipo = LinhaLida::Tipo::Partes;
        linha.ingrediente = TextoDoMarkdown(texto);
        m_r.linhas += linha;
        return;
    }
    LinhaLida linha;
    linha.tipo = LinhaLida::Tipo::Partes;
    PorQuantidade(SemEscapes(m.captured(1)), linha);
    linha.ingrediente = TextoDoMarkdown(m.captured(2));
    if (linha.ingrediente.trimmed().isEmpty())
        linha = {LinhaLida::Tipo::Texto, SemEscapes(m.captured(1)), {}, {}, {}, {}, false};
    m_r.linhas += linha;
}

void LeitorMarkdown::LerIngredientes(const QStringList &linhas)
{
    static const QRegularExpression titulo(R"(^\s{0,3}#{1,6}\s+(.*?)\s*#*$)");
    static const QRegularExpression marcador(R"(^\s*(?:[-*+]|\d+[.)])\s+(.*)$)");
    QString item;
    const auto fechar = [&] {
        if (!item.trimmed().isEmpty())
            AcrescentarItem(item);
        item.clear();
    };
    for (const QString &linha : linhas) {
        if (const auto t = titulo.match(linha); t.hasMatch()) {
            fechar();
            m_r.Titulo(SemEscapes(t.captured(1)));
        } else if (const auto m = marcador.match(linha); m.hasMatch()) {
            fechar();
            item = m.captured(1);
        } else if (linha.trimmed().isEmpty()) {
            fechar();
        } else if (!item.isEmpty()) {
            item += u' ' + linha.trimmed();
        }
    }
    fechar();
}

void LeitorMarkdown::LerModo(const QStringList &linhas)
{
    static const QRegularExpression titulo(R"(^\s{0,3}#{1,6}\s+(.*?)\s*#*$)");
    static const QRegularExpression marcador(R"(^\s*(?:[-*+]|\d+[.)])\s+)");
    QString paragrafo;
    const auto fechar = [&] {
        if (!paragrafo.trimmed().isEmpty())
            m_r.passos += PassoLido{{}, TextoDoMarkdown(paragrafo.trimmed())};
        paragrafo.clear();
    };
    for (const QString &linha : linhas) {
        if (linha.trimmed().isEmpty() || ERegua(linha)) {
            fechar();
            continue;
        }
        if (const auto t = titulo.match(linha); t.hasMatch()) {
            fechar();
            m_r.passos += PassoLido{SemEscapes(t.captured(1)), {}};
            continue;
        }
        if (marcador.match(linha).hasMatch())
            fechar();
        paragrafo += (paragrafo.isEmpty() ? "" : " ") + linha.trimmed();
    }
    fechar();
}

std::optional<Receita> LeitorMarkdown::Ler(const Entrada &entrada, Relato &relato)
{
    static const QRegularExpression titulo(R"(^#\s+(.*?)\s*#*$)");
    static const QRegularExpression sublinha(R"(^=+\s*$)");
    QString texto = entrada.Texto();
    texto.replace("\r\n", "\n").replace(u'\r', u'\n');
    const QStringList linhas = texto.split(u'\n');
    qsizetype i = 0;
    while (i < linhas.size() && linhas[i].trimmed().isEmpty())
        ++i;
    if (i < linhas.size()) {
        if (const auto m = titulo.match(linhas[i]); m.hasMatch()) {
            m_r.nome = TextoDoMarkdown(m.captured(1));
            ++i;
        } else if (i + 1 < linhas.size() && sublinha.match(linhas[i + 1]).hasMatch()) {
            m_r.nome = TextoDoMarkdown(linhas[i].trimmed());
            i += 2;
        }
    }
    const auto ate = [&](qsizetype de) {
        qsizetype fim = de;
        while (fim < linhas.size() && !ERegua(linhas[fim]))
            ++fim;
        return fim;
    };
    const qsizetype primeira = ate(i);
    const qsizetype segunda = ate(primeira + 1);
    LerDescricao(linhas.mid(i, primeira - i), entrada);
    LerIngredientes(linhas.mid(primeira + 1, segunda - primeira - 1));
    LerModo(linhas.mid(std::min(segunda + 1, linhas.size())));
    m_r.markdown = false; // its marks are gone, and what was escaped is text
    return Montar(m_r, relato);
}
} // namespace

QList<Receita> Formatos::LerCsv(const Entrada &entrada, Relato &relato)
{
    QString texto = entrada.Texto();
    texto.replace("\r\n", "\n").replace(u'\r', u'\n');
    const QList<Coluna> colunas = Cabecalho(texto);
    const QString primeira = texto.left(texto.indexOf(u'\n'));
    QList<Receita> receitas;
    QList<QStringList> fileiras = Celulas(texto, SeparadorDe(primeira));
    if (!fileiras.isEmpty())
        fileiras.removeFirst();
    for (const QStringList &fileira : fileiras) {
        bool vazia = true;
        for (const QString &celula : fileira)
            vazia = vazia && celula.trimmed().isEmpty();
        if (!vazia)
            Guardar(LerFileira(fileira, colunas), relato, receitas);
    }
    return receitas;
}

namespace
{
/// These formats hold one recipe a file: what is larger is none.
bool GrandeDemais(const Entrada &entrada, Relato &relato)
{
    constexpr qsizetype kMaiorReceita = 4 * 1024 * 1024;
    if (entrada.bytes.size() <= kMaiorReceita)
        return false;
    relato.Avisar("O arquivo é grande demais para uma receita.");
    return true;
}
} // namespace

QList<Receita> Formatos::LerCooklang(const Entrada &entrada, Relato &relato)
{
    if (GrandeDemais(entrada, relato))
        return {};
    const std::optional<Receita> receita = LeitorCooklang().Ler(entrada, relato);
    return receita ? QList<Receita>{*receita} : QList<Receita>();
}

QList<Receita> Formatos::LerMarkdown(const Entrada &entrada, Relato &relato)
{
    if (GrandeDemais(entrada, relato))
        return {};
    const std::optional<Receita> receita = LeitorMarkdown().Ler(entrada, relato);
    return receita ? QList<Receita>{*receita} : QList<Receita>();
}

QList<Receita> Formatos::LerPacote(const Entrada &entrada, Relato &relato)
{
    QList<Receita> receitas;
    QByteArray texto;
    if (Recipiente::Descompactar(entrada.bytes, texto, Pacote::kMaiorTexto) != Recipiente::kSucesso) {
        relato.Avisar("Pacote do Cozinhario 2005 corrompido.");
        return receitas;
    }
    QBuffer arquivo(&texto);
    arquivo.open(QIODevice::ReadOnly);
    Pacote::Texto pacote;
    if (pacote.Abrir(arquivo) != Pacote::Texto::Abertura::Aberto) {
        relato.Avisar("Pacote do Cozinhario 2005 inválido.");
        return receitas;
    }
    for (qsizetype i = 0; i < pacote.Quantas(); ++i) {
        const Pacote::Registro registro = pacote[i];
        if (const QString excesso = registro.Excesso(); !excesso.isEmpty()) {
            relato.Pular(excesso);
            continue;
        }
        const auto valor = [&](QStringView tag) { return Pacote::DesfazerVirgulas(registro.Valor(tag)); };
        const auto memo = [&](QStringView tag) { return Pacote::DesfazerVirgulas(Pacote::DesfazerQuebras(registro.Valor(tag))); };
        Receita receita;
        receita.Nome = valor(u"NOME");
        receita.Classificacao = valor(u"CLASSIFICACAO");
        receita.Modo = memo(u"MODO");
        receita.Porcoes = registro.Valor(u"PORCOES").toString();
        receita.Preparo = valor(u"PREPARO");
        receita.Tipo_Calorias = registro.Valor(u"TIPO_CALORIAS").toString();
        receita.Calorias = registro.Valor(u"CALORIAS").toString();
        receita.Tipo = registro.Valor(u"TIPO").toString();
        receita.Origem = valor(u"ORIGEM");
        receita.Observacao = memo(u"OBSERVACAO");
        receita.Figura = registro.Valor(u"FIGURA").toString();
        Pacote::LeitorDaFigura figura = registro.AbrirFigura();
        for (QByteArray bloco = figura.LerBloco(); !bloco.isEmpty() && receita.DadosFigura.size() < kMaiorArquivo;
             bloco = figura.LerBloco())
            receita.DadosFigura += bloco;
        for (const Pacote::Registro &item : registro.Itens())
            receita.Ingredientes.append({Pacote::DesfazerVirgulas(item.Valor(u"INGREDIENTE")),
                                         Pacote::DesfazerVirgulas(item.Valor(u"QUANTIDADE")),
                                         Pacote::DesfazerVirgulas(item.Valor(u"UNIDADE"))});
        if (receita.Nome.isEmpty())
            relato.Pular("não tem nome.");
        else
            receitas += receita;
    }
    return receitas;
}
