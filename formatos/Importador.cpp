#include "formatos/Importador.h"

#include "base/Ordem.h"
#include "formatos/Limpeza.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "store/Comandos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>

namespace
{
using namespace Formatos;

constexpr qsizetype kAmostra = 256 * 1024;

bool EPagina(const QString &inicio)
{
    static const QRegularExpression pagina(R"(<!doctype\s+html|<html[\s>]|<head[\s>]|<body[\s>]|itemtype=|application/ld\+json)",
                                           QRegularExpression::CaseInsensitiveOption);
    return pagina.match(inicio).hasMatch();
}

bool ECsv(const QString &inicio)
{
    static const QRegularExpression nome(R"((?:^|[;,\t])\s*"?\s*(?:nome|título|titulo|receita|title|name)\s*"?\s*(?=[;,\t]))",
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression outra(R"((?:^|[;,\t])\s*"?\s*(?:ingredientes|ingredients|modo|modo de preparo|modo de fazer|preparo|instruções|directions|instructions|steps|method)\s*"?\s*(?=[;,\t]|$))",
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::UseUnicodePropertiesOption);
    constexpr qsizetype kMaiorCabecalho = 2000;
    const qsizetype fim = inicio.indexOf(u'\n');
    const QString linha = inicio.left(std::min(fim < 0 ? inicio.size() : fim, kMaiorCabecalho)).simplified() + u';';
    return nome.match(linha).hasMatch() && outra.match(linha).hasMatch();
}

bool ECooklang(const QString &nome, const QString &inicio)
{
    static const QRegularExpression marca(R"((?:^|\s)@[^\s@#~{}][^@#~{}\n]*\{[^}\n]*\})");
    return nome.endsWith(".cook", Qt::CaseInsensitive) || marca.match(inicio).hasMatch();
}

bool EReceitaMarkdown(const QString &inicio)
{
    static const QRegularExpression titulo(R"(^\s*(?:#\s+\S|[^\n]+\n=+\s*\n))");
    static const QRegularExpression regua(R"(^(?:-{3,}|\*{3,}|_{3,}|\* \* \*|- - -)\s*$)",
                                          QRegularExpression::MultilineOption);
    static const QRegularExpression lista(R"(^[ \t]*[-*+][ \t]+\S)", QRegularExpression::MultilineOption);
    if (!titulo.match(inicio).hasMatch())
        return false;
    const QRegularExpressionMatch m = regua.match(inicio);
    if (!m.hasMatch())
        return false;
    // Between the first rule and the second stand the ingredients.
    const QString depois = inicio.sliced(m.capturedEnd());
    const QRegularExpressionMatch segunda = regua.match(depois);
    return lista.match(segunda.hasMatch() ? depois.first(segunda.capturedStart()) : depois).hasMatch();
}

Formato ReconhecerTexto(const QString &nome, const QString &inicio)
{
    static const QRegularExpression mime(R"(^(?:From|MIME-Version|Snapshot-Content-Location|Content-Type|Subject|Date):)",
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression mealMaster(R"(^[ \t]*(?:MMMMM|-{5,}).*Meal-?\s?Master)",
                                               QRegularExpression::CaseInsensitiveOption |
                                                   QRegularExpression::MultilineOption);
    static const QRegularExpression masterCook(R"(^[ \t]*\*[ \t]*Exported[ \t]+from[ \t]+MasterCook)",
                                               QRegularExpression::CaseInsensitiveOption |
                                                   QRegularExpression::MultilineOption);
    static const QRegularExpression raiz(R"(<\s*(gourmetDoc|krecipes|mx2)\b)", QRegularExpression::CaseInsensitiveOption);
    const QString limpo = inicio.trimmed();
    if (limpo.startsWith(u'{') || limpo.startsWith(u'['))
        return Formato::Json;
    if (mime.match(limpo).hasMatch() && inicio.contains("multipart/related", Qt::CaseInsensitive))
        return Formato::Mhtml;
    if (limpo.startsWith(u'<')) {
        if (const auto m = raiz.match(limpo.left(20'000)); m.hasMatch()) {
            const QString nomeDaRaiz = m.captured(1).toLower();
            return nomeDaRaiz == "gourmetdoc" ? Formato::Gourmet
                   : nomeDaRaiz == "krecipes" ? Formato::KRecipes
                                              : Formato::MasterCookXml;
        }
        if (EPagina(limpo))
            return Formato::Pagina;
    }
    if (mealMaster.match(inicio).hasMatch())
        return Formato::MealMaster;
    if (masterCook.match(inicio).hasMatch())
        return Formato::MasterCookTexto;
    if (ECsv(limpo))
        return Formato::Csv;
    if (nome.endsWith(".cook", Qt::CaseInsensitive))
        return Formato::Cooklang;
    if (EReceitaMarkdown(inicio))
        return Formato::Markdown;
    if (ECooklang(nome, inicio))
        return Formato::Cooklang;
    return EPagina(limpo) ? Formato::Pagina : Formato::Desconhecido;
}

QString Mensagem(Formato formato, qsizetype quantas)
{
    if (quantas == 0)
        return NomeDoFormato(formato) + ": nenhuma receita.";
    return {};
}
} // namespace

Formato Formatos::Reconhecer(const QString &nome, const QByteArray &bytes, const QByteArray &pagina)
{
    if (bytes.startsWith("PK\x03\x04") || bytes.startsWith("PK\x05\x06"))
        return Formato::Zip;
    if (bytes.startsWith("\x1F\x8B"))
        return Formato::Gzip;
    if (bytes.size() > Recipiente::kTrailer && bytes.startsWith('\x78') &&
        Recipiente::LerTrailer(QByteArrayView(bytes).last(Recipiente::kTrailer)))
        return Formato::Pacote;
    const QByteArray inicio = bytes.first(std::min(bytes.size(), kAmostra));
    if (!inicio.startsWith("\xFF\xFE") && !inicio.startsWith("\xFE\xFF") && inicio.contains('\0'))
        return Formato::Desconhecido;
    QByteArray inteiro = inicio;
    if (bytes.size() > kAmostra) // a letter cut in two is no letter of another set
        while (!inteiro.isEmpty() && static_cast<unsigned char>(inteiro.back()) >= 0x80)
            inteiro.chop(1);
    const Entrada amostra{nome, inteiro, nullptr, pagina};
    QString texto = amostra.Texto();
    return ReconhecerTexto(nome, texto.replace("\r\n", "\n").replace(u'\r', u'\n'));
}

QString Formatos::NomeDoFormato(Formato formato)
{
    switch (formato) {
    case Formato::Pagina: return "página da internet";
    case Formato::Mhtml: return "página da internet (MHTML)";
    case Formato::Json: return "JSON";
    case Formato::Paprika: return "Paprika";
    case Formato::Zip: return "arquivo zip";
    case Formato::Gzip: return "arquivo gzip";
    case Formato::MealMaster: return "MealMaster";
    case Formato::MasterCookTexto: return "MasterCook (texto)";
    case Formato::MasterCookXml: return "MasterCook";
    case Formato::Gourmet: return "Gourmet";
    case Formato::KRecipes: return "KRecipes";
    case Formato::Csv: return "tabela (CSV)";
    case Formato::Cooklang: return "Cooklang";
    case Formato::Markdown: return "Markdown (RecipeMD)";
    case Formato::Pacote: return "pacote do Cozinhario 2005";
    case Formato::Desconhecido: break;
    }
    return "formato desconhecido";
}

QList<Receita> Importador::Ler(const QString &caminho)
{
    m_relato.DefinirArquivo(caminho);
    const QFileInfo info(caminho);
    if (info.isDir())
        return LerFonte(FontePasta(caminho), caminho, 0);
    QFile arquivo(caminho);
    if (!info.isFile()) {
        m_relato.Avisar(info.exists() ? "Não é um arquivo." : "O arquivo não existe.");
        return {};
    }
    if (arquivo.size() > kMaiorArquivo) {
        m_relato.Avisar("O arquivo é grande demais (mais de 256 MB).");
        return {};
    }
    if (!arquivo.open(QIODevice::ReadOnly)) {
        m_relato.Avisar("O arquivo não pôde ser lido: " + arquivo.errorString());
        return {};
    }
    const FontePasta fonte(info.absolutePath());
    const Entrada entrada{info.fileName(), arquivo.readAll(), &fonte, m_pagina};
    return LerEntrada(entrada, caminho, 0, true);
}

QList<Receita> Importador::LerFonte(const Fonte &fonte, const QString &rotulo, int nivel)
{
    QList<Receita> receitas;
    for (const QString &nome : fonte.Nomes()) {
        const std::optional<QByteArray> bytes = fonte.Ler(nome);
        if (!bytes) {
            m_relato.DefinirArquivo(rotulo + u'/' + nome);
            m_relato.Avisar("O arquivo não pôde ser lido.");
            continue;
        }
        receitas += LerEntrada({nome, *bytes, &fonte, m_pagina}, rotulo + u'/' + nome, nivel, false);
    }
    m_relato.DefinirArquivo(rotulo);
    return receitas;
}

QList<Receita> Importador::LerEntrada(const Entrada &entrada, const QString &rotulo, int nivel, bool sozinha)
{
    constexpr int kMaisNiveis = 2; // an archive, and one within it
    m_relato.DefinirArquivo(rotulo);
    const Formato formato = Reconhecer(entrada.nome, entrada.bytes, m_pagina);
    const auto abrir = [&](const Desempacotado &aberto) {
        if (!aberto.erro.isEmpty())
            m_relato.Avisar(aberto.erro);
        return LerFonte(FonteMemoria(aberto.arquivos), rotulo, nivel + 1);
    };
    QList<Receita> receitas;
    switch (formato) {
    case Formato::Zip:
        if (nivel >= kMaisNiveis) {
            m_relato.Avisar("Arquivos zip dentro de outros, fundo demais: não foi lido.");
            return {};
        }
        return abrir(AbrirZip(entrada.bytes));
    case Formato::Gzip: {
        const std::optional<QByteArray> aberto = AbrirGzip(entrada.bytes);
        if (!aberto) {
            m_relato.Avisar("O arquivo está danificado ou se desdobra em dados demais.");
            return {};
        }
        if (aberto->mid(257, 5) == "ustar" || (aberto->size() > 512 && nivel == 0 && aberto->left(100).contains('\0')))
            return nivel >= kMaisNiveis ? QList<Receita>() : abrir(AbrirTar(*aberto));
        Entrada dentro = entrada;
        dentro.bytes = *aberto;
        return nivel > kMaisNiveis ? QList<Receita>() : LerEntrada(dentro, rotulo, nivel + 1, sozinha);
    }
    case Formato::Pagina: receitas = LerPagina(entrada, m_relato); break;
    case Formato::Mhtml: receitas = LerMhtml(entrada, m_relato); break;
    case Formato::Json: receitas = LerJsonDePrograma(entrada, m_relato); break;
    case Formato::Paprika: receitas = LerPaprika(entrada, m_relato); break;
    case Formato::MealMaster: receitas = LerMealMaster(entrada, m_relato); break;
    case Formato::MasterCookTexto: receitas = LerMasterCookTexto(entrada, m_relato); break;
    case Formato::MasterCookXml: receitas = LerMasterCookXml(entrada, m_relato); break;
    case Formato::Gourmet: receitas = LerGourmet(entrada, m_relato); break;
    case Formato::KRecipes: receitas = LerKRecipes(entrada, m_relato); break;
    case Formato::Csv: receitas = LerCsv(entrada, m_relato); break;
    case Formato::Cooklang: receitas = LerCooklang(entrada, m_relato); break;
    case Formato::Markdown: receitas = LerMarkdown(entrada, m_relato); break;
    case Formato::Pacote: receitas = LerPacote(entrada, m_relato); break;
    case Formato::Desconhecido:
        // Beside recipes lie pictures and style sheets: only a file that was named is told about.
        if (sozinha)
            m_relato.Avisar("O arquivo não é de nenhum formato de receitas conhecido.");
        return {};
    }
    m_relato.DefinirArquivo(rotulo);
    if (const QString mensagem = Mensagem(formato, receitas.size()); !mensagem.isEmpty() && sozinha)
        m_relato.Avisar(mensagem);
    return receitas;
}

Receita Formatos::ParaOPacote(Receita receita)
{
    const auto proteger = [](QString &texto, bool memo) {
        static const QRegularExpression menor(R"(<(?=[A-Za-z/]))");
        if (!memo) {
            texto.replace(u'\'', QChar(0x2019));
            texto.replace("\r\n", " ").replace(u'\n', u' ').replace(u'\r', u' ').replace(u'\t', u' ');
        }
        if (texto.contains(u'<'))
            texto.replace(menor, QString(QChar(0x2039)));
        texto.replace("\\VG/", "\\ VG/");
        texto.replace(QChar(0xA0), u' ');
    };
    for (QString Receita::*campo : {&Receita::Nome, &Receita::Classificacao, &Receita::Preparo, &Receita::Origem})
        proteger(receita.*campo, false);
    for (QString Receita::*campo : {&Receita::Modo, &Receita::Observacao})
        proteger(receita.*campo, true);
    for (Linha &linha : receita.Ingredientes) {
        proteger(linha.Ingrediente, false);
        proteger(linha.Quantidade, false);
        proteger(linha.Unidade, false);
    }
    // Numbers stand in the package as they are: only figures and one comma.
    static const QRegularExpression numero(R"(^\d+(?:[.,]\d+)?$)");
    for (QString Receita::*campo : {&Receita::Porcoes, &Receita::Calorias}) {
        (receita.*campo).replace(u'.', u',');
        if (!numero.match(receita.*campo).hasMatch())
            (receita.*campo).clear();
    }
    if (receita.Tipo_Calorias != "R" && receita.Tipo_Calorias != "P")
        receita.Tipo_Calorias.clear();
    receita.Tipo.clear();
    if (!receita.DadosFigura.isEmpty())
        receita.Figura = "F0000001.img";
    return receita;
}

QString Formatos::GravarPacote(QList<Receita> receitas, const QString &caminho)
{
    if (receitas.size() > Pacote::kMaisReceitas)
        return "As receitas são muitas para um pacote.";
    std::stable_sort(receitas.begin(), receitas.end(),
                     [](const Receita &a, const Receita &b) { return Ordem::Comparar(a.Nome, b.Nome) < 0; });
    const QFileInfo info(caminho);
    const QString falha = "Não foi possível gravar o pacote " + caminho + ".";
    QTemporaryFile texto(QDir::tempPath() + "/livro-XXXXXX.lrs");
    if (!texto.open() || texto.write(Pacote::EscreverCabecalho()) < 0)
        return falha;
    for (const Receita &receita : receitas) {
        const QByteArray bytes = Pacote::EscreverReceita(receita);
        if (texto.write(bytes) != bytes.size())
            return falha + " " + texto.errorString();
        if (texto.pos() > Pacote::kMaiorTexto)
            return "As receitas, com suas figuras, são grandes demais para um pacote.";
    }
    if (!texto.flush())
        return falha + " " + texto.errorString();
    int erro = 0;
    if (!Recipiente::CompactarArquivo(texto.fileName(), info.absoluteFilePath(), 9, erro, true))
        return falha + " (erro " + QString::number(erro) + ")";
    return {};
}

QStringList Formatos::NomesRepetidos(const QList<Receita> &receitas)
{
    QHash<QString, int> vezes;
    QStringList repetidos;
    for (const Receita &receita : receitas)
        if (++vezes[Comandos::Maiusculas(receita.Nome)] == 2)
            repetidos += receita.Nome;
    return repetidos;
}
