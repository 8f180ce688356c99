#include "store/Figuras.h"

#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>

#include <algorithm>

namespace
{
constexpr QLatin1String kPasta("Fotos");

/// The entry of `pasta` that has this name, in this or another letter case; the name itself when there is
/// none.
QString NomeNoDisco(const QString &pasta, const QString &nome)
{
    if (QFileInfo::exists(pasta + '/' + nome))
        return nome;
    for (const QString &entrada :
         QDir(pasta).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        if (entrada.compare(nome, Qt::CaseInsensitive) == 0)
            return entrada;
    return nome;
}

QString PastaDeFotos(const Banco &banco)
{
    const QString raiz = banco.Caminho("");
    return raiz + NomeNoDisco(raiz, kPasta);
}

bool NomeSimples(const QString &nome)
{
    return !nome.isEmpty() && nome != "." && nome != ".." && !nome.contains('/') && !nome.contains('\\') &&
           !nome.contains(QChar(0));
}
} // namespace

QString Figuras::Caminho(const QString &figura) const
{
    if (!NomeSimples(figura))
        return {};
    const QString pasta = PastaDeFotos(m_banco);
    return pasta + '/' + NomeNoDisco(pasta, figura);
}

QString Figuras::PegarNomeArquivo(qint64 lngReceita) const
{
    try {
        const RecordSet rs = m_banco.AbrirRecordset(Comandos::SqlReceitaFigura(lngReceita), {"Figura"});
        return rs.Eof() ? QString("") : rs.Texto(0);
    } catch (const ErroBanco &) {
        return ""; // by promise: who asks for a picture gets none
    }
}

void Figuras::ApagarFigura(qint64 lngReceita) const
{
    const RecordSet rs = m_banco.AbrirRecordset(Comandos::SqlFigura(lngReceita));
    const QString caminho = rs.Eof() ? QString() : Caminho(rs.Texto(0));
    if (!caminho.isEmpty())
        QFile::remove(caminho); // a missing picture is no failure
}

void Figuras::CopiarFigura(const QString &origem, qint64 lngReceita) const
{
    QFile arquivo(origem);
    QDir().mkpath(PastaDeFotos(m_banco));
    QSaveFile destino(Caminho(Comandos::NomeFigura(lngReceita)));
    if (!QFileInfo(origem).isFile() || !arquivo.open(QIODevice::ReadOnly) ||
        !destino.open(QIODevice::WriteOnly))
        return; // by promise: the row may name a picture that is missing
    QByteArray bloco;
    while (!(bloco = arquivo.read(256 * 1024)).isEmpty())
        destino.write(bloco);
    if (arquivo.error() != QFileDevice::NoError)
        destino.cancelWriting();
    destino.commit(); // does nothing after a failure: the earlier picture stays
}

void Figuras::GravarFigura(const QByteArray &bytes, qint64 lngReceita) const
{
    QDir().mkpath(PastaDeFotos(m_banco));
    QSaveFile destino(Caminho(Comandos::NomeFigura(lngReceita)));
    if (!destino.open(QIODevice::WriteOnly))
        return; // by promise, as above
    destino.write(bytes);
    destino.commit();
}

QImage CarregarImagem(const QString &caminho)
{
    if (!QFileInfo(caminho).isFile())
        return {};
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly))
        return {};
    // Reading from the open file, not from its name, leaves the choice of the format to the content.
    QImageReader leitor(&arquivo);
    const QByteArray formato = leitor.format();
    if (formato != "bmp" && formato != "jpeg" && formato != "gif" && formato != "png")
        return {};
    leitor.setAutoTransform(true);
    return leitor.read();
}
