#include "news/PastaDaPagina.h"

#include "news/LimitesPagina.h"
#include "news/ListaNovidades.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace
{
QImage CarregarDentroDoLimite(const QString &caminho, qint64 maximo)
{
    QImageReader leitor(caminho);
    leitor.setDecideFormatFromContent(true);
    leitor.setAutoTransform(true);
    static const QList<QByteArray> kFormatos{"bmp", "jpeg", "jpg", "gif", "png"};
    if (!kFormatos.contains(leitor.format()))
        return {};
    // The header tells the size before anything is unfolded.
    const QSize tamanho = leitor.size();
    if (!tamanho.isValid() || tamanho.isEmpty() ||
        qint64(tamanho.width()) * qint64(tamanho.height()) > maximo)
        return {};
    return leitor.read();
}
} // namespace

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

    const QImage imagem = CarregarDentroDoLimite(caminho, qMin(kPixelsPorFigura, kPixels - m_pixels));
    Figura figura;
    if (!imagem.isNull()) {
        m_pixels += qint64(imagem.width()) * imagem.height();
        figura = {"figura-" + QString::number(m_imagens.size() + 1), imagem.size()};
        m_imagens.insert(figura.chave, imagem);
    }
    m_figuras.insert(caminho, figura);
    return figura;
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
