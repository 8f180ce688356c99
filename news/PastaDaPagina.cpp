#include "news/PastaDaPagina.h"

#include "news/LimitesPagina.h"
#include "news/ListaNovidades.h"

#include "base/LerImagem.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

QByteArray PastaLocal::LerPagina(const QString &nome)
{
    QFile arquivo(CaminhoLocal(nome));
    if (arquivo.fileName().isEmpty() || !arquivo.open(QIODevice::ReadOnly))
        return {};
    return arquivo.read(LimitesPagina::kBytes);
}

PastaDaPagina::Figura PastaLocal::PegarFigura(const QString &nome)
{
    const QString caminho = CaminhoLocal(nome);
    if (caminho.isEmpty())
        return {};
    if (const auto conhecida = m_figuras.constFind(caminho); conhecida != m_figuras.constEnd())
        return *conhecida;

    const QImage imagem = Carregar(caminho);
    Figura figura;
    if (!imagem.isNull()) {
        figura = {"figura-" + QString::number(m_imagens.size() + 1), imagem.size()};
        m_imagens.insert(figura.chave, imagem);
    }
    m_figuras.insert(caminho, figura);
    return figura;
}

QImage PastaLocal::Carregar(const QString &caminho)
{
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly) || arquivo.size() > kBytesPorFigura)
        return {};
    QByteArray bytes = arquivo.readAll();
    QBuffer buffer(&bytes);
    QImageReader leitor(&buffer);
    static const QList<QByteArray> kFormatos{"bmp", "jpeg", "gif", "png"};
    if (!kFormatos.contains(leitor.format()))
        return {};
    // The header tells the size before anything is unfolded, and the scans what unfolding costs.
    const QSize tamanho = leitor.size();
    const qint64 pixels = qint64(tamanho.width()) * qint64(tamanho.height());
    if (!tamanho.isValid() || tamanho.isEmpty() || pixels > qMin(kPixelsPorFigura, kPixels - m_pixels))
        return {};
    const qint64 trabalho = pixels * std::max(MedirJpeg(bytes).passadas, 1);
    if (trabalho > kTrabalho - m_trabalho)
        return {};
    // Counted whether a picture comes of it or not: a damaged one costs the same.
    m_trabalho += trabalho;
    const QImage imagem = LerImagem(bytes).imagem;
    if (!imagem.isNull())
        m_pixels += pixels;
    return imagem;
}

QString PastaLocal::CaminhoLocal(const QString &nome) const
{
    if (!ListaNovidades::NomeAceito(nome))
        return {};
    const QDir pasta(m_pasta);
    QString achado = nome;
    if (!pasta.exists(nome)) {
        achado.clear();
        for (const QString &arquivo : pasta.entryList(QDir::Files)) {
            if (arquivo.compare(nome, Qt::CaseInsensitive) == 0)
                achado = arquivo;
        }
        if (achado.isEmpty())
            return {};
    }
    const QFileInfo info(pasta.filePath(achado));
    return info.isFile() && !info.isSymLink() ? info.filePath() : QString();
}
