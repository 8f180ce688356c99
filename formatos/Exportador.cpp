#include "formatos/Exportador.h"

#include "formatos/Codificacao.h"
#include "formatos/EscritorJson.h"
#include "formatos/Importador.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/Rascunho.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>

#include <array>

namespace
{
using namespace Formatos;

/// What a format does not carry, told once a recipe.
void ContarPerdas(const Receita &receita, const QStringList &campos, Relato &relato)
{
    QStringList perdas;
    for (const QString &campo : campos) {
        if (campo == "figura" && !receita.Figura.isEmpty())
            perdas += "a figura";
        else if (campo == "calorias" && !SemZero(receita.Calorias).isEmpty())
            perdas += "as calorias";
        else if (campo == "tempo" && !receita.Preparo.isEmpty())
            perdas += "o tempo de preparo";
        else if (campo == "base" && receita.Tipo_Calorias == "R" && !SemZero(receita.Calorias).isEmpty())
            perdas += "a base das calorias";
        else if (campo == "tipos" && receita.Classificacao.contains(u','))
            perdas += "a vírgula do tipo";
    }
    if (perdas.isEmpty())
        return;
    relato.DefinirReceita(receita.Nome);
    relato.Avisar("Este formato não leva " + perdas.join(", ") + ".");
}

QString ParaPasta(const QString &destino)
{
    const QFileInfo info(destino);
    if (info.exists() && !info.isDir())
        return "Já existe um arquivo com este nome: " + destino;
    const QDir pasta(destino);
    if (info.exists() && !pasta.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        return "A pasta já existe e não está vazia: " + destino;
    return QDir().mkpath(destino) ? QString() : "Não foi possível criar a pasta " + destino;
}

/// A name not used yet, case aside, in this export.
class Nomes
{
public:
    QString Novo(const QString &nome)
    {
        QString tentativa = nome;
        for (int i = 2; m_usados.contains(tentativa.toLower()); ++i)
            tentativa = nome + " (" + QString::number(i) + ")";
        m_usados.insert(tentativa.toLower());
        return tentativa;
    }

private:
    QSet<QString> m_usados;
};

QString Extensao(const QByteArray &figura)
{
    const QString formato = FormatoDaFigura(figura);
    return formato == "JPEG" ? "jpg" : formato == "PNG" ? "png" : formato == "GIF" ? "gif" : "bmp";
}

QByteArray ComoJpeg(const QByteArray &figura)
{
    QByteArray bytes = figura;
    QBuffer buffer(&bytes);
    QImageReader leitor(&buffer);
    leitor.setAutoTransform(true);
    const QImage imagem = leitor.read();
    QByteArray jpeg;
    QBuffer saida(&jpeg);
    if (imagem.isNull() || !saida.open(QIODevice::WriteOnly) || !imagem.convertToFormat(QImage::Format_RGB32).save(&saida, "JPEG", 90))
        return {};
    return jpeg;
}

QByteArray FiguraDe(const Saida &saida, const ReceitaDoLivro &r, Relato &relato)
{
    if (r.receita.Figura.isEmpty())
        return {};
    QByteArray figura = saida.livro.Figura(r);
    relato.DefinirReceita(r.receita.Nome);
    if (figura.isEmpty()) {
        relato.FaltaFigura("A figura " + r.receita.Figura + " não está na pasta Fotos.");
    } else if (FormatoDaFigura(figura).isEmpty()) {
        relato.FaltaFigura("A figura " + r.receita.Figura + " não é uma imagem que se possa mostrar.");
        figura.clear();
    }
    return figura;
}

// ---- JSON ---------------------------------------------------------------------------------------------------

QString GravarJson(const Saida &saida, const QString &destino, Relato &relato)
{
    if (destino.endsWith(".json", Qt::CaseInsensitive)) {
        QJsonArray lista;
        for (const ReceitaDoLivro &r : saida.receitas) {
            QJsonObject objeto = ParaSchema(r.receita);
            objeto[kChaveNossa] = ChaveNossa(r.receita);
            if (const QByteArray figura = FiguraDe(saida, r, relato); !figura.isEmpty())
                objeto["image"] = "data:image/" + FormatoDaFigura(figura).toLower() + ";base64," +
                                  QString::fromLatin1(figura.toBase64());
            lista.append(objeto);
        }
        return GravarInteiro(destino, QJsonDocument(lista).toJson());
    }
    if (const QString erro = ParaPasta(destino); !erro.isEmpty())
        return erro;
    Nomes nomes;
    for (const ReceitaDoLivro &r : saida.receitas) {
        const QString pasta = destino + "/" + nomes.Novo(NomeDeArquivo(r.receita.Nome));
        if (!QDir().mkpath(pasta))
            return "Não foi possível criar a pasta " + pasta;
        QString original;
        QByteArray copia;
        if (const QByteArray figura = FiguraDe(saida, r, relato); !figura.isEmpty()) {
            copia = figura;
            if (FormatoDaFigura(figura) != "JPEG") {
                copia = ComoJpeg(figura);
                original = "original." + Extensao(figura);
                if (const QString erro = GravarInteiro(pasta + "/" + original, figura); !erro.isEmpty())
                    return erro;
            }
            if (!copia.isEmpty())
                if (const QString erro = GravarInteiro(pasta + "/full.jpg", copia); !erro.isEmpty())
                    return erro;
        }
        QJsonObject objeto = ParaSchema(r.receita);
        objeto[kChaveNossa] =
            ChaveNossa(r.receita, original, QCryptographicHash::hash(copia, QCryptographicHash::Sha256).toHex());
        if (const QString erro = GravarInteiro(pasta + "/recipe.json", QJsonDocument(objeto).toJson()); !erro.isEmpty())
            return erro;
    }
    return {};
}

// ---- One text file a recipe ---------------------------------------------------------------------------------

QString GravarTextos(const Saida &saida, const QString &destino, const QString &fim, Relato &relato,
                     const std::function<QString(const Receita &, const QString &)> &escrever)
{
    const bool umArquivo = saida.receitas.size() == 1 && destino.endsWith(fim, Qt::CaseInsensitive);
    if (!umArquivo)
        if (const QString erro = ParaPasta(destino); !erro.isEmpty())
            return erro;
    Nomes nomes;
    for (const ReceitaDoLivro &r : saida.receitas) {
        const QString base = umArquivo ? QFileInfo(destino).completeBaseName() : nomes.Novo(NomeDeArquivo(r.receita.Nome));
        const QString pasta = umArquivo ? QFileInfo(destino).absolutePath() : destino;
        QString nomeDaFigura;
        if (const QByteArray figura = FiguraDe(saida, r, relato); !figura.isEmpty()) {
            nomeDaFigura = base + "." + Extensao(figura);
            if (const QString erro = GravarInteiro(pasta + "/" + nomeDaFigura, figura); !erro.isEmpty())
                return erro;
        }
        if (const QString erro = GravarInteiro(pasta + "/" + base + fim, escrever(r.receita, nomeDaFigura).toUtf8());
            !erro.isEmpty())
            return erro;
        ContarPerdas(r.receita, {"tipos"}, relato);
    }
    return {};
}

QStringList Paragrafos(const QString &texto)
{
    QStringList paragrafos;
    for (const QString &linha : QString(texto).replace("\r\n", "\n").replace(u'\r', u'\n').split(u'\n'))
        if (const QString limpa = linha.trimmed(); !limpa.isEmpty())
            paragrafos += limpa;
    return paragrafos;
}

QString EscaparMarkdown(const QString &texto)
{
    QString saida;
    for (const QChar c : texto) {
        if (QStringView(u"\\*_[]`~").contains(c))
            saida += u'\\';
        saida += c;
    }
    static const QRegularExpression comeco(R"(^([#+>=-]))");
    return saida.replace(comeco, "\\\\\\1");
}

bool EQuantidadeComNumero(const QString &quantidade)
{
    static const QRegularExpression numero(R"(^(?:±\s*)?[\d½¼¾])");
    return numero.match(quantidade).hasMatch();
}

// ---- Cooklang -----------------------------------------------------------------------------------------------

/// What the format would take for a mark of its own is parted by a sign that nobody sees.
QString EscaparCooklang(const QString &texto)
{
    static const QRegularExpression marca(R"(([@#~])(?=\S))");
    static const QRegularExpression comeco(R"(^([>=-]))");
    static const QRegularExpression comentario(R"(-(?=-)|\[(?=-))");
    const QChar invisivel(0x200B);
    QString saida = texto;
    saida.replace(marca, QString("\\1") + invisivel);
    saida.replace(comentario, QString("\\0") + invisivel);
    saida.replace(comeco, invisivel + QString("\\1"));
    if (saida.endsWith(u'\\'))
        saida += invisivel;
    return saida;
}

QString NomeCooklang(QString nome)
{
    for (const QChar c : {u'{', u'}', u'@', u'#', u'~'})
        nome.replace(c, u' ');
    return nome.simplified();
}

QString MedidaCooklang(const Linha &linha)
{
    QString medida = linha.Quantidade;
    if (!linha.Unidade.isEmpty())
        medida += "%" + linha.Unidade;
    return medida.replace(u'{', u'(').replace(u'}', u')');
}

QString ValorYaml(const QString &texto)
{
    return "'" + QString(texto).replace("'", "''") + "'";
}

// ---- MealMaster ---------------------------------------------------------------------------------------------

struct Codigo {
    const char *codigo;
    const char *um;
    const char *varios;
};
constexpr std::array<Codigo, 27> kCodigos = {{{"ea", "unidade", "unidades"},
                                              {"cn", "lata", "latas"},
                                              {"pn", "pitada", "pitadas"},
                                              {"dr", "gota", "gotas"},
                                              {"ts", "colher de chá", "colheres de chá"},
                                              {"tb", "colher de sopa", "colheres de sopa"},
                                              {"c", "xícara", "xícaras"},
                                              {"fl", "onça líquida", "onças líquidas"},
                                              {"pt", "pint", "pints"},
                                              {"qt", "quart", "quarts"},
                                              {"ga", "galão", "galões"},
                                              {"g", "g", "g"},
                                              {"kg", "kg", "kg"},
                                              {"mg", "mg", "mg"},
                                              {"cg", "cg", "cg"},
                                              {"dg", "dg", "dg"},
                                              {"ml", "ml", "ml"},
                                              {"cl", "cl", "cl"},
                                              {"dl", "dl", "dl"},
                                              {"l", "litro", "litros"},
                                              {"cc", "cm³", "cm³"},
                                              {"sl", "fatia", "fatias"},
                                              {"bn", "maço", "maços"},
                                              {"ct", "caixa", "caixas"},
                                              {"pk", "pacote", "pacotes"},
                                              {"oz", "onça", "onças"},
                                              {"lb", "libra", "libras"}}};

/// The code that reads back as this unit; nullptr when there is none.
const char *CodigoDe(const QString &unidade, const QString &quantidade)
{
    if (unidade.isEmpty())
        return "";
    const bool plural = UltimoNumero(quantidade) >= 2;
    for (const Codigo &codigo : kCodigos)
        if (unidade == QString::fromUtf8(plural ? codigo.varios : codigo.um))
            return codigo.codigo;
    return nullptr;
}

/// Words in lines of at most `largura` characters.
QStringList Quebrar(const QString &texto, qsizetype largura)
{
    QStringList linhas;
    QString linha;
    for (const QString &palavra : texto.split(u' ', Qt::SkipEmptyParts)) {
        if (!linha.isEmpty() && linha.size() + 1 + palavra.size() > largura) {
            linhas += linha;
            linha.clear();
        }
        linha += (linha.isEmpty() ? "" : " ") + palavra;
    }
    if (!linha.isEmpty())
        linhas += linha;
    return linhas;
}

QString LinhaMealMaster(const Linha &linha)
{
    static const QRegularExpression cabe(R"(^[0-9 ./-]{1,7}$)");
    const char *codigo = CodigoDe(linha.Unidade, linha.Quantidade);
    const QString quantidade = QString(linha.Quantidade).replace(" a ", "-").replace(u',', u'.');
    const bool separada = codigo && cabe.match(quantidade).hasMatch() && QuantidadeDada(quantidade) == linha.Quantidade;
    const QString texto = separada ? linha.Ingrediente : TextoDaLinha(linha);
    QString saida;
    QString frente = separada ? quantidade.rightJustified(7) + u' ' + QString::fromLatin1(codigo).leftJustified(2) + u' '
                              : QString(11, u' ');
    for (const QString &parte : Quebrar(texto, 28)) {
        saida += frente + parte + "\r\n";
        frente = QString(11, u' ') + u'-';
    }
    return saida;
}

// ---- CSV ----------------------------------------------------------------------------------------------------

QString Celula(QString texto)
{
    texto.replace("\r\n", "\n");
    // Spreadsheets run a cell that begins like this.
    if (!texto.isEmpty() && QStringView(u"=+-@").contains(texto.front()))
        texto.prepend(u' ');
    return u'"' + texto.replace(u'"', "\"\"") + u'"';
}

QString GravarPacoteDoLivro(const Saida &saida, const QString &destino, Relato &relato)
{
    // Recipes of this kind and above may not be passed on in packages.
    constexpr double kTipoReservado = 2;
    QList<Receita> receitas;
    for (const ReceitaDoLivro &r : saida.receitas) {
        relato.DefinirReceita(r.receita.Nome);
        if (QString(r.receita.Tipo).replace(u',', u'.').toDouble() >= kTipoReservado) {
            relato.Pular("é de um tipo que não vai em pacotes.");
            continue;
        }
        Receita receita = r.receita;
        if (!receita.Figura.isEmpty()) {
            receita.DadosFigura = saida.livro.Figura(r);
            if (receita.DadosFigura.isEmpty())
                relato.FaltaFigura("A figura " + receita.Figura + " não está na pasta Fotos.");
        }
        receitas += receita;
    }
    if (receitas.isEmpty())
        return "Nenhuma receita para o pacote.";
    return GravarPacote(receitas, destino);
}
} // namespace

QString Formatos::SemZero(const QString &numero)
{
    static const QRegularExpression zero(R"(^\s*0*(?:[.,]0*)?\s*$)");
    return zero.match(numero).hasMatch() ? QString() : numero;
}

QString Formatos::NomeDeArquivo(const QString &nome)
{
    static const QRegularExpression proibidos(R"re([/\\:*?"<>|\x00-\x1F\x7F])re");
    QString limpo = QString(nome).replace(proibidos, " ").simplified().left(100).trimmed();
    while (limpo.startsWith(u'.'))
        limpo = limpo.sliced(1).trimmed();
    while (limpo.endsWith(u'.'))
        limpo = limpo.chopped(1).trimmed();
    return limpo.isEmpty() ? QString("receita") : limpo;
}

QString Formatos::GravarInteiro(const QString &caminho, const QByteArray &bytes)
{
    QSaveFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(bytes) != bytes.size() || !arquivo.flush() || !arquivo.commit())
        return "Não foi possível gravar " + caminho + ": " + arquivo.errorString();
    return {};
}

QString Formatos::ParaMarkdown(const Receita &receita, const QString &figura)
{
    QString texto = "# " + EscaparMarkdown(receita.Nome) + "\n\n";
    for (const QString &paragrafo : Paragrafos(receita.Observacao))
        texto += EscaparMarkdown(paragrafo) + "\n\n";
    const auto campo = [&](const char *nome, const QString &valor) {
        if (!valor.isEmpty())
            texto += QString::fromUtf8(nome) + ": " + EscaparMarkdown(valor) + "\n\n";
    };
    campo("Tempo de preparo", receita.Preparo);
    campo("Origem", receita.Origem);
    if (const QString calorias = SemZero(receita.Calorias); !calorias.isEmpty())
        campo("Calorias", calorias + (receita.Tipo_Calorias == "R"   ? " por receita"
                                      : receita.Tipo_Calorias == "P" ? " por porção"
                                                                     : ""));
    if (!figura.isEmpty())
        texto += "![" + EscaparMarkdown(receita.Nome) + "](<" + QString::fromLatin1(figura.toUtf8().toPercentEncoding(" ")) + ">)\n\n";
    if (!receita.Classificacao.isEmpty())
        texto += "*" + EscaparMarkdown(receita.Classificacao) + "*\n\n";
    if (const QString porcoes = SemZero(receita.Porcoes); !porcoes.isEmpty())
        texto += "**" + porcoes + (porcoes == "1" ? " porção" : " porções") + "**\n\n";
    texto += "---\n\n";
    for (const Linha &linha : receita.Ingredientes) {
        if (ETitulo(linha)) {
            texto += "\n## " + EscaparMarkdown(linha.Ingrediente.chopped(1)) + "\n\n";
            continue;
        }
        // In emphasis the first number is the quantity and the rest the unit; without a number all is quantity.
        QString quantia = linha.Quantidade;
        QString nome = linha.Ingrediente;
        if (!linha.Unidade.isEmpty()) {
            if (EQuantidadeComNumero(linha.Quantidade))
                quantia += " " + linha.Unidade;
            else
                nome = TextoDaLinha({nome, {}, linha.Unidade});
        }
        texto += "- " + (quantia.isEmpty() ? "" : "*" + EscaparMarkdown(quantia) + "* ") + EscaparMarkdown(nome) + "\n";
    }
    texto += "\n---\n";
    for (const QString &paragrafo : Paragrafos(receita.Modo))
        texto += "\n" + EscaparMarkdown(paragrafo) + "\n";
    return texto;
}

QString Formatos::ParaCooklang(const Receita &receita)
{
    QString texto = "---\ntitle: " + ValorYaml(receita.Nome) + "\n";
    const auto campo = [&](const char *nome, const QString &valor) {
        if (!valor.isEmpty())
            texto += QString::fromLatin1(nome) + ": " + ValorYaml(valor) + "\n";
    };
    campo("servings", SemZero(receita.Porcoes));
    campo("course", receita.Classificacao);
    campo("time", receita.Preparo);
    campo("source", receita.Origem);
    if (const QString calorias = SemZero(receita.Calorias); !calorias.isEmpty())
        campo("calories", calorias + (receita.Tipo_Calorias == "R" ? " kcal por receita" : " kcal por porção"));
    if (!receita.Observacao.isEmpty()) {
        texto += "description: |\n";
        for (const QString &paragrafo : Paragrafos(receita.Observacao))
            texto += "  " + paragrafo + "\n";
    }
    texto += "---\n";
    QStringList grupo;
    bool secoes = false;
    const auto fechar = [&] {
        if (!grupo.isEmpty())
            texto += "\nSepare " + grupo.join(", ") + ".\n";
        grupo.clear();
    };
    for (const Linha &linha : receita.Ingredientes) {
        if (ETitulo(linha)) {
            fechar();
            texto += "\n= " + EscaparCooklang(linha.Ingrediente.chopped(1)) + " =\n";
            secoes = true;
            continue;
        }
        grupo += "@" + NomeCooklang(linha.Ingrediente) + "{" + MedidaCooklang(linha) + "}";
    }
    fechar();
    if (secoes)
        texto += "\n= Modo de preparo =\n";
    for (const QString &paragrafo : Paragrafos(receita.Modo))
        texto += "\n" + EscaparCooklang(paragrafo) + "\n";
    return texto;
}

QString Formatos::ParaMealMaster(const Receita &receita)
{
    QString texto = "MMMMM----- Recipe via Meal-Master (tm) v8.05\r\n \r\n";
    texto += "      Title: " + receita.Nome.left(60).trimmed() + "\r\n";
    texto += " Categories: " + (receita.Classificacao.isEmpty() ? QString("None") : receita.Classificacao) + "\r\n";
    const QString porcoes = SemZero(receita.Porcoes);
    if (!porcoes.isEmpty())
        texto += "      Yield: " + porcoes + (porcoes == "1" ? " porção" : " porções") + "\r\n";
    texto += " \r\n";
    for (const Linha &linha : receita.Ingredientes) {
        if (ETitulo(linha)) {
            const QString titulo = linha.Ingrediente.chopped(1);
            texto += "MMMMM" + QString(std::max<qsizetype>(5, (65 - titulo.size()) / 2), u'-') + titulo +
                     QString(std::max<qsizetype>(5, (66 - titulo.size()) / 2), u'-') + "\r\n";
        } else {
            texto += LinhaMealMaster(linha);
        }
    }
    texto += " \r\n";
    QStringList paragrafos = Paragrafos(receita.Modo);
    if (receita.Nome.size() > 60)
        paragrafos += "Nome: " + receita.Nome;
    if (!receita.Observacao.isEmpty()) {
        paragrafos += "Observações:";
        paragrafos += Paragrafos(receita.Observacao);
    }
    for (const QString &paragrafo : paragrafos) {
        for (const QString &linha : Quebrar(paragrafo, 73))
            texto += "  " + linha + "\r\n";
        texto += " \r\n";
    }
    if (!receita.Origem.isEmpty())
        texto += "  Fonte: " + receita.Origem + "\r\n \r\n";
    return texto + "MMMMM\r\n\r\n";
}

QString Formatos::CabecalhoCsv()
{
    QStringList celulas;
    for (const char *nome : {"Nome", "Tipo", "Porções", "Tempo de preparo", "Calorias", "Base das calorias", "Ingredientes",
                             "Modo de preparo", "Observações", "Origem"})
        celulas += Celula(QString::fromUtf8(nome));
    return celulas.join(u';') + "\r\n";
}

QString Formatos::ParaCsv(const Receita &receita)
{
    QStringList linhas;
    for (const Linha &linha : receita.Ingredientes)
        linhas += TextoDaLinha(linha);
    const QString calorias = SemZero(receita.Calorias);
    const QString base = calorias.isEmpty()              ? QString()
                         : receita.Tipo_Calorias == "R" ? QString("receita")
                         : receita.Tipo_Calorias == "P" ? QString("porção")
                                                        : QString("nenhuma");
    const QStringList celulas = {Celula(receita.Nome),    Celula(receita.Classificacao),
                                 Celula(SemZero(receita.Porcoes)), Celula(receita.Preparo),
                                 Celula(calorias),        Celula(base),
                                 Celula(linhas.join(u'\n')), Celula(receita.Modo),
                                 Celula(receita.Observacao), Celula(receita.Origem)};
    return celulas.join(u';') + "\r\n";
}

QStringList Formatos::FormatosDeSaida()
{
    return {"json", "html", "markdown", "cooklang", "mealmaster", "csv", "pacote", "access"};
}

QString Formatos::Exportar(const Saida &saida, const QString &formato, const QString &destino, Relato &relato)
{
    relato.DefinirArquivo(destino);
    if (formato == "json")
        return GravarJson(saida, destino, relato);
    if (formato == "html")
        return GravarPagina(saida, destino, "todas", relato);
    if (formato == "markdown")
        return GravarTextos(saida, destino, ".md", relato, ParaMarkdown);
    if (formato == "cooklang")
        return GravarTextos(saida, destino, ".cook", relato,
                            [](const Receita &receita, const QString &) { return ParaCooklang(receita); });
    if (formato == "pacote")
        return GravarPacoteDoLivro(saida, destino, relato);
    if (formato == "access")
        return GravarAccess(saida, destino, relato);
    if (formato != "mealmaster" && formato != "csv")
        return "Formato desconhecido: " + formato + ". Os formatos são: " + FormatosDeSaida().join(", ") + ".";
    const bool csv = formato == "csv";
    QString texto = csv ? CabecalhoCsv() : QString();
    for (const ReceitaDoLivro &r : saida.receitas) {
        texto += csv ? ParaCsv(r.receita) : ParaMealMaster(r.receita);
        ContarPerdas(r.receita, csv ? QStringList{"figura", "tipos"} : QStringList{"figura", "calorias", "tempo", "tipos"}, relato);
    }
    if (csv)
        return GravarInteiro(destino, "\xEF\xBB\xBF" + texto.toUtf8());
    int perdidos = 0;
    const QByteArray bytes = BytesDoTexto(texto, saida.pagina.isEmpty() ? QByteArray("windows-1252") : saida.pagina, perdidos);
    if (perdidos > 0) {
        relato.ContarSubstituidos(perdidos);
        relato.DefinirReceita({});
        relato.Avisar(QString::number(perdidos) + " caracteres que a página de código não tem ficaram como \"?\".");
    }
    return GravarInteiro(destino, bytes);
}
