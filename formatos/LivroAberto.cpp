#include "formatos/LivroAberto.h"

#include "base/Numero.h"
#include "base/Ordem.h"
#include "formatos/Entrada.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"
#include "store/ExameArquivo.h"
#include "store/Figuras.h"
#include "store/access/ErroAccess.h"
#include "store/access/LivroAccess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace
{
using namespace Formatos;

constexpr auto kLivro = "dadosr.lst";
constexpr qint64 kNomeNaCopia = 200; ///< of an entry of a backup, and then nine figures of its length
constexpr qint64 kCabecalhoNaCopia = 209;

/// Four bytes of the book's header that change with every write; -1 when they cannot be read.
qint64 Mudancas(const QString &arquivo)
{
    QFile f(arquivo);
    if (!f.open(QIODevice::ReadOnly) || !f.seek(24))
        return -1;
    const QByteArray bytes = f.read(4);
    qint64 valor = 0;
    for (const char c : bytes)
        valor = valor * 256 + static_cast<unsigned char>(c);
    return bytes.size() == 4 ? valor : -1;
}

QString TextoDe(const LivroAccess::Texto &texto)
{
    return texto.value_or(QString());
}

QString TextoDe(const LivroAccess::Numero &numero)
{
    return numero ? TextoDoNumero(*numero) : QString();
}
} // namespace

LivroAberto::~LivroAberto() = default;

LivroAberto::LivroAberto(const QString &alvo)
{
    const QFileInfo info(alvo);
    if (!info.exists())
        throw ErroLivro("Não existe: " + alvo);
    try {
        if (info.isDir())
            AbrirArquivo(info.absoluteFilePath() + "/" + kLivro, info.absoluteFilePath());
        else
            AbrirArquivo(info.absoluteFilePath(), info.absolutePath());
    } catch (const ErroBanco &erro) {
        QString texto = QString::fromUtf8(erro.what());
        throw ErroLivro(texto.replace("\r\n\r\n", " ").replace("\r\n", " "));
    }
    Ordenar();
}

void LivroAberto::AbrirArquivo(const QString &arquivo, const QString &pasta)
{
    m_pasta = pasta;
    QString erro;
    switch (ExaminarArquivo(arquivo, &erro)) {
    case TipoArquivo::Livro:
    case TipoArquivo::Cortado:
    case TipoArquivo::Futuro:
        if (QFileInfo(arquivo).fileName() == kLivro) {
            AbrirLivro(QFileInfo(arquivo).absolutePath());
            return;
        }
        [[fallthrough]];
    case TipoArquivo::LivroWal: {
        // Under another name, or with a second file to it: a copy of both is read.
        m_temporaria = std::make_unique<QTemporaryDir>();
        const QString copia = m_temporaria->filePath(kLivro);
        if (!m_temporaria->isValid() || !QFile::copy(arquivo, copia))
            throw ErroLivro("O livro não pôde ser copiado para ser lido: " + arquivo);
        for (const QString fim : {"-wal", "-journal"})
            if (QFile::exists(arquivo + fim))
                QFile::copy(arquivo + fim, copia + fim);
        QFile::setPermissions(copia, QFile::ReadOwner | QFile::WriteOwner);
        Banco(m_temporaria->path()).LerUmaVez();
        LerTabelas(m_temporaria->path());
        return;
    }
    case TipoArquivo::Access:
        AbrirAccess(arquivo);
        return;
    case TipoArquivo::Ausente:
    case TipoArquivo::Vazio:
        throw ErroLivro("Não há livro de receitas (" + QString(kLivro) + ") em " + QFileInfo(arquivo).absolutePath());
    case TipoArquivo::Outro:
        break;
    }
    if (!erro.isEmpty())
        throw ErroLivro("Não foi possível abrir " + arquivo + ": " + erro);
    QFile f(arquivo);
    if (f.open(QIODevice::ReadOnly) && f.size() > Recipiente::kTrailer && f.seek(f.size() - Recipiente::kTrailer) &&
        Recipiente::LerTrailer(f.readAll())) {
        AbrirCopia(arquivo);
        return;
    }
    throw ErroLivro("Não é um livro, uma cópia de segurança nem um pacote do Cozinhario 2005: " + arquivo);
}

void LivroAberto::AbrirLivro(const QString &pasta)
{
    const QString arquivo = pasta + "/" + kLivro;
    // Between the two tables the program may write: then both are read again.
    constexpr int kVezes = 5;
    for (int vez = 1;; ++vez) {
        const qint64 antes = Mudancas(arquivo);
        LerTabelas(pasta);
        if (Mudancas(arquivo) == antes || vez == kVezes)
            return;
    }
}

void LivroAberto::LerTabelas(const QString &pasta)
{
    Banco banco(pasta);
    banco.DefinirSoLeitura();
    m_motor = pasta;
    m_receitas.clear();
    m_linhas = 0;
    m_linhasSemReceita = 0;
    QHash<qint64, qsizetype> porNumero;
    RecordSet rs;
    try {
        rs = banco.AbrirRecordset("Select * from Receitas Order By Nome");
    } catch (const ErroBanco &) {
        // What a crash left half done is rolled back in a copy: the book itself stays as it is.
        if (m_temporaria || !QFile::exists(pasta + "/" + kLivro + "-journal"))
            throw;
        m_temporaria = std::make_unique<QTemporaryDir>();
        for (const QString fim : {"", "-journal"})
            QFile::copy(pasta + "/" + kLivro + fim, m_temporaria->filePath(QString(kLivro) + fim));
        Banco(m_temporaria->path()).LerUmaVez();
        LerTabelas(m_temporaria->path());
        return;
    }
    m_receitas.reserve(rs.RecordCount());
    for (; !rs.Eof(); rs.MoveNext()) {
        ReceitaDoLivro r;
        r.numero = rs.Valor(u"id_receitas").toLongLong();
        r.data = rs.Texto(u"Data");
        r.receita.Nome = rs.Texto(u"Nome");
        r.receita.Classificacao = rs.Texto(u"Classificacao");
        r.receita.Modo = rs.Texto(u"Modo");
        r.receita.Porcoes = rs.Texto(u"Porcoes");
        r.receita.Preparo = rs.Texto(u"Preparo");
        r.receita.Tipo_Calorias = rs.Texto(u"Tipo_Calorias");
        r.receita.Calorias = rs.Texto(u"Calorias");
        r.receita.Tipo = rs.Texto(u"Tipo");
        r.receita.Origem = rs.Texto(u"Origem");
        r.receita.Observacao = rs.Texto(u"Observacao");
        r.receita.Figura = rs.Texto(u"Figura");
        if (rs.Valor(u"Nome").isNull() || r.receita.Nome.trimmed().isEmpty())
            m_danos += "A receita número " + QString::number(r.numero) + " não tem nome.";
        if (rs.Valor(u"Modo").isNull())
            m_danos += "A receita número " + QString::number(r.numero) + " não tem modo de preparar.";
        porNumero.insert(r.numero, m_receitas.size());
        m_receitas += r;
    }
    RecordSet linhas = banco.AbrirRecordset("Select * from Ingredientes Order By id_ingredientes");
    for (; !linhas.Eof(); linhas.MoveNext()) {
        ++m_linhas;
        const auto dona = porNumero.constFind(linhas.Valor(u"id_receitas").toLongLong());
        if (dona == porNumero.constEnd()) {
            ++m_linhasSemReceita;
            continue;
        }
        m_receitas[*dona].receita.Ingredientes.append(
            {linhas.Texto(u"Ingrediente"), linhas.Texto(u"Quantidade"), linhas.Texto(u"Unidade")});
    }
}

void LivroAberto::AbrirAccess(const QString &arquivo)
{
    m_especie = Especie::Access;
    QFile f(arquivo);
    if (!f.open(QIODevice::ReadOnly))
        throw ErroLivro("Não foi possível abrir " + arquivo + ": " + f.errorString());
    LivroAccess livro;
    try {
        livro = LerLivroAccess(f);
    } catch (const std::exception &erro) {
        throw ErroLivro(QString::fromUtf8(erro.what()));
    }
    QHash<qint64, qsizetype> porNumero;
    for (const LivroAccess::Receita &antiga : livro.receitas) {
        ReceitaDoLivro r;
        r.numero = antiga.id_receitas;
        r.data = TextoDe(antiga.Data);
        r.receita.Nome = TextoDe(antiga.Nome);
        r.receita.Classificacao = TextoDe(antiga.Classificacao);
        r.receita.Modo = TextoDe(antiga.Modo);
        r.receita.Porcoes = TextoDe(antiga.Porcoes);
        r.receita.Preparo = TextoDe(antiga.Preparo);
        r.receita.Tipo_Calorias = TextoDe(antiga.Tipo_Calorias);
        r.receita.Calorias = TextoDe(antiga.Calorias);
        r.receita.Tipo = TextoDe(antiga.Tipo);
        r.receita.Origem = TextoDe(antiga.Origem);
        r.receita.Observacao = TextoDe(antiga.Observacao);
        r.receita.Figura = TextoDe(antiga.Figura);
        porNumero.insert(r.numero, m_receitas.size());
        m_receitas += r;
    }
    for (const LivroAccess::Ingrediente &linha : livro.ingredientes) {
        ++m_linhas;
        const auto dona = linha.id_receitas ? porNumero.constFind(*linha.id_receitas) : porNumero.constEnd();
        if (dona == porNumero.constEnd()) {
            ++m_linhasSemReceita;
            continue;
        }
        m_receitas[*dona].receita.Ingredientes.append(
            {TextoDe(linha.Nome), TextoDe(linha.Quantidade), TextoDe(linha.Unidade)});
    }
}

/// A container: the archive of a backup, or the text of a package.
void LivroAberto::AbrirCopia(const QString &arquivo)
{
    m_temporaria = std::make_unique<QTemporaryDir>();
    const QString aberto = m_temporaria->filePath("aberto");
    int erro = 0;
    if (!m_temporaria->isValid() || !Recipiente::DescompactarArquivo(arquivo, aberto, erro, true))
        throw ErroLivro("O arquivo está danificado: " + arquivo);
    QFile f(aberto);
    if (!f.open(QIODevice::ReadOnly))
        throw ErroLivro("O arquivo aberto não pôde ser lido: " + arquivo);
    if (f.peek(kNomeNaCopia).trimmed() != kLivro) {
        f.close();
        QFile::remove(aberto);
        AbrirPacote(arquivo);
        return;
    }
    const QString pasta = m_temporaria->filePath("livro");
    QDir().mkpath(pasta + "/Fotos");
    int entradas = 0;
    while (f.size() - f.pos() > kCabecalhoNaCopia || (f.size() - f.pos() == kCabecalhoNaCopia && entradas == 0)) {
        const QByteArray cabecalho = f.read(kCabecalhoNaCopia);
        const QString nome = QString::fromLatin1(cabecalho.first(kNomeNaCopia)).trimmed();
        bool ok = false;
        const qint64 tamanho = cabecalho.sliced(kNomeNaCopia).trimmed().toLongLong(&ok);
        if (!ok || tamanho < 0 || tamanho > f.size() - f.pos()) {
            m_danos += "A entrada \"" + nome + "\" da cópia de segurança está danificada ou cortada.";
            break;
        }
        const bool segura = !nome.isEmpty() && !nome.contains(u'/') && !nome.contains(u'\\') && nome != "." && nome != "..";
        const QString destino = entradas == 0 ? pasta + "/" + kLivro : segura ? pasta + "/Fotos/" + nome : QString();
        if (destino.isEmpty())
            m_danos += "A cópia de segurança tem uma figura de nome impróprio: \"" + nome + "\".";
        QFile saida(destino);
        if (!destino.isEmpty() && !saida.open(QIODevice::WriteOnly))
            throw ErroLivro("Não há lugar para abrir a cópia de segurança.");
        for (qint64 resta = tamanho; resta > 0;) {
            const QByteArray bloco = f.read(std::min<qint64>(resta, 1 << 20));
            if (bloco.isEmpty())
                break;
            if (saida.isOpen() && saida.write(bloco) != bloco.size())
                throw ErroLivro("Não há lugar para abrir a cópia de segurança.");
            resta -= bloco.size();
        }
        ++entradas;
    }
    f.close();
    QFile::remove(aberto);
    const QStringList danos = m_danos;
    AbrirArquivo(pasta + "/" + kLivro, pasta);
    m_danos = danos + m_danos;
    m_pasta = pasta;
    m_especie = Especie::Copia;
}

void LivroAberto::AbrirPacote(const QString &arquivo)
{
    m_especie = Especie::Pacote;
    QFile f(arquivo);
    if (!f.open(QIODevice::ReadOnly))
        throw ErroLivro("Não foi possível abrir " + arquivo + ": " + f.errorString());
    Relato relato;
    const FonteNenhuma nada;
    const QList<Receita> lidas = LerPacote({QFileInfo(arquivo).fileName(), f.readAll(), &nada, {}}, relato);
    if (lidas.isEmpty() && !relato.Avisos().isEmpty())
        throw ErroLivro(relato.Avisos().first().texto);
    for (const Aviso &aviso : relato.Avisos())
        m_danos += aviso.texto;
    for (const Receita &receita : lidas) {
        ReceitaDoLivro r;
        r.numero = m_receitas.size() + 1;
        r.receita = receita;
        m_linhas += static_cast<int>(receita.Ingredientes.size());
        m_receitas += r;
    }
}

void LivroAberto::Ordenar()
{
    std::stable_sort(m_receitas.begin(), m_receitas.end(), [](const ReceitaDoLivro &a, const ReceitaDoLivro &b) {
        return Ordem::Comparar(a.receita.Nome, b.receita.Nome) < 0;
    });
}

QByteArray LivroAberto::Figura(const ReceitaDoLivro &receita) const
{
    if (m_especie == Especie::Pacote)
        return receita.receita.DadosFigura;
    if (receita.receita.Figura.isEmpty())
        return {};
    const Banco banco(m_pasta);
    const QString caminho = ::Figuras(banco).Caminho(receita.receita.Figura);
    QFile arquivo(caminho);
    if (caminho.isEmpty() || !QFileInfo(caminho).isFile() || arquivo.size() > kMaiorArquivo ||
        !arquivo.open(QIODevice::ReadOnly))
        return {};
    return arquivo.readAll();
}

Receita LivroAberto::Completa(const ReceitaDoLivro &receita) const
{
    Receita completa = receita.receita;
    completa.DadosFigura = Figura(receita);
    return completa;
}

QStringList LivroAberto::Integridade() const
{
    if (m_motor.isEmpty())
        return {};
    Banco banco(m_motor);
    banco.DefinirSoLeitura();
    QStringList achados;
    try {
        for (const QString &achado : banco.Integridade())
            achados += "O arquivo do livro está danificado: " + achado;
    } catch (const ErroBanco &erro) {
        achados += "O arquivo do livro não pôde ser conferido: " + QString::fromUtf8(erro.what()).simplified();
    }
    return achados;
}

QStringList LivroAberto::Figuras() const
{
    return QDir(m_pasta + "/Fotos").entryList(QDir::Files, QDir::Name);
}
