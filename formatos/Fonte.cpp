#include "formatos/Fonte.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <zip.h>
#include <zlib.h>

#include <algorithm>

namespace
{
using namespace Formatos;

constexpr qint64 kMaiorSoma = qint64(512) * 1024 * 1024;
constexpr int kMaisArquivos = 200'000;
constexpr int kMaisNaPasta = 200'000;

bool NomeIgnorado(const QString &nome)
{
    for (const QString &parte : nome.split(u'/'))
        if (parte == "__MACOSX" || parte.startsWith(u'.'))
            return true;
    return nome.isEmpty() || nome.endsWith(u'/');
}

/// A name inside an archive, with "/" and nothing that leads outside; "" when it would.
QString NomeLimpo(QString nome)
{
    nome.replace(u'\\', u'/');
    nome = QDir::cleanPath(nome).normalized(QString::NormalizationForm_C);
    if (nome.startsWith(u'/') || nome.startsWith("../") || nome == ".." || nome.contains(QChar(0)))
        return {};
    return nome;
}

struct FecharZip {
    void operator()(zip_t *zip) const { zip_discard(zip); }
};
struct FecharEntrada {
    void operator()(zip_file_t *arquivo) const { zip_fclose(arquivo); }
};
} // namespace

FontePasta::FontePasta(const QString &pasta)
    : m_pasta(QFileInfo(pasta).canonicalFilePath())
{
}

QStringList FontePasta::Nomes() const
{
    QStringList nomes;
    if (m_pasta.isEmpty())
        return nomes;
    const QDir raiz(m_pasta);
    QDirIterator it(m_pasta, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (it.hasNext() && nomes.size() < kMaisNaPasta) {
        const QString nome = raiz.relativeFilePath(it.next());
        if (!NomeIgnorado(nome))
            nomes += nome;
    }
    std::sort(nomes.begin(), nomes.end());
    return nomes;
}

std::optional<QByteArray> FontePasta::Ler(const QString &nome) const
{
    const QString caminho = QFileInfo(m_pasta + u'/' + nome).canonicalFilePath();
    if (m_pasta.isEmpty() || !caminho.startsWith(m_pasta.endsWith(u'/') ? m_pasta : m_pasta + u'/'))
        return std::nullopt;
    QFile arquivo(caminho);
    if (!QFileInfo(caminho).isFile() || arquivo.size() > kMaiorArquivo || !arquivo.open(QIODevice::ReadOnly))
        return std::nullopt;
    return arquivo.readAll();
}

QStringList FonteMemoria::Nomes() const
{
    QStringList nomes = m_arquivos.keys();
    std::sort(nomes.begin(), nomes.end());
    return nomes;
}

std::optional<QByteArray> FonteMemoria::Ler(const QString &nome) const
{
    const auto achado = m_arquivos.constFind(nome);
    return achado == m_arquivos.constEnd() ? std::nullopt : std::optional(*achado);
}

Desempacotado Formatos::AbrirZip(const QByteArray &bytes)
{
    Desempacotado saida;
    zip_error_t erro;
    zip_error_init(&erro);
    zip_source_t *fonte = zip_source_buffer_create(bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0, &erro);
    std::unique_ptr<zip_t, FecharZip> zip(fonte ? zip_open_from_source(fonte, ZIP_RDONLY, &erro) : nullptr);
    zip_error_fini(&erro);
    if (!zip) {
        if (fonte)
            zip_source_free(fonte);
        saida.erro = "O arquivo zip está danificado.";
        return saida;
    }
    qint64 soma = 0;
    const zip_int64_t quantos = zip_get_num_entries(zip.get(), 0);
    if (quantos > kMaisArquivos) {
        saida.erro = "O arquivo zip tem arquivos demais.";
        return saida;
    }
    int danificados = 0;
    for (zip_int64_t i = 0; i < quantos; ++i) {
        const auto indice = static_cast<zip_uint64_t>(i);
        const char *bruto = zip_get_name(zip.get(), indice, 0);
        const QString nome = NomeLimpo(QString::fromUtf8(bruto));
        if (bruto && QByteArray(bruto).endsWith('/'))
            continue;
        if (nome.isEmpty() || NomeIgnorado(nome))
            continue;
        zip_stat_t dados;
        zip_stat_init(&dados);
        std::unique_ptr<zip_file_t, FecharEntrada> entrada(zip_fopen_index(zip.get(), indice, 0));
        if (!entrada || zip_stat_index(zip.get(), indice, 0, &dados) != 0) {
            ++danificados;
            continue;
        }
        // What the directory says of the size is only a hint; the bytes are counted as they come.
        QByteArray conteudo;
        QByteArray bloco(64 * 1024, Qt::Uninitialized);
        zip_int64_t lidos = 0;
        while ((lidos = zip_fread(entrada.get(), bloco.data(), static_cast<zip_uint64_t>(bloco.size()))) > 0) {
            conteudo.append(bloco.constData(), lidos);
            soma += lidos;
            if (soma > kMaiorSoma || conteudo.size() > kMaiorArquivo) {
                saida.erro = "O arquivo zip se desdobra em dados demais; só o começo foi lido.";
                return saida;
            }
        }
        if (lidos < 0) {
            ++danificados;
            continue;
        }
        saida.arquivos.insert(nome, conteudo);
    }
    if (danificados > 0)
        saida.erro = QString::number(danificados) + (danificados == 1 ? " arquivo do zip está danificado."
                                                                      : " arquivos do zip estão danificados.");
    return saida;
}

std::optional<QByteArray> Formatos::AbrirGzip(const QByteArray &bytes)
{
    z_stream fluxo{};
    if (inflateInit2(&fluxo, 15 + 16) != Z_OK)
        return std::nullopt;
    QByteArray entrada = bytes; // zlib asks for bytes that are not const
    fluxo.next_in = reinterpret_cast<Bytef *>(entrada.data());
    fluxo.avail_in = static_cast<uInt>(entrada.size());
    QByteArray saida;
    QByteArray bloco(64 * 1024, Qt::Uninitialized);
    int rc = Z_OK;
    while (rc == Z_OK) {
        fluxo.next_out = reinterpret_cast<Bytef *>(bloco.data());
        fluxo.avail_out = static_cast<uInt>(bloco.size());
        rc = inflate(&fluxo, Z_NO_FLUSH);
        saida.append(bloco.constData(), bloco.size() - static_cast<qsizetype>(fluxo.avail_out));
        if (saida.size() > kMaiorArquivo)
            rc = Z_MEM_ERROR;
    }
    inflateEnd(&fluxo);
    return rc == Z_STREAM_END ? std::optional(saida) : std::nullopt;
}

Desempacotado Formatos::AbrirTar(const QByteArray &bytes)
{
    constexpr qsizetype kBloco = 512;
    Desempacotado saida;
    qsizetype i = 0;
    while (i + kBloco <= bytes.size() && bytes[i] != '\0') {
        const QByteArray cabecalho = bytes.mid(i, kBloco);
        const QByteArray nome = cabecalho.first(100);
        bool ok = false;
        const qint64 tamanho = cabecalho.mid(124, 12).replace('\0', ' ').trimmed().toLongLong(&ok, 8);
        i += kBloco;
        if (!ok || tamanho < 0 || tamanho > bytes.size() - i) {
            saida.erro = "O arquivo está danificado; só o começo foi lido.";
            break;
        }
        const char tipo = cabecalho[156];
        const QString limpo = NomeLimpo(QString::fromUtf8(nome.constData(), static_cast<qsizetype>(qstrnlen(nome.constData(), 100))));
        if ((tipo == '0' || tipo == '\0') && !NomeIgnorado(limpo) && saida.arquivos.size() < kMaisArquivos)
            saida.arquivos.insert(limpo, bytes.mid(i, tamanho));
        i += (tamanho + kBloco - 1) / kBloco * kBloco;
    }
    return saida;
}

QString Formatos::PastaDe(const QString &nome)
{
    const qsizetype barra = nome.lastIndexOf(u'/');
    return barra < 0 ? QString() : nome.first(barra);
}

QString Formatos::NomeRelativo(const QString &base, const QString &nome)
{
    const QString pasta = PastaDe(base);
    return NomeLimpo(pasta.isEmpty() ? nome : pasta + u'/' + nome);
}
