#include "backup/ArquivadorDoLivro.h"

#include "backup/ArquivoBackup.h"
#include "backup/LivroParado.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace
{
constexpr qint64 kBloco = 1024 * 1024;
constexpr int kTentativas = 5;
} // namespace

Fim ArquivadorDoLivro::EscreverLivro(QFile &arquivo)
{
    const QString caminho = m_banco.CaminhoDoLivro();
    const qint64 inicio = arquivo.pos();
    // The window lives while the book is copied, and another copy of the program may be importing: a book
    // that changed under the copying is copied again.
    for (int tentativa = 0; tentativa < kTentativas; ++tentativa) {
        m_banco.LerUmaVez();
        const LivroParado parado(m_banco);
        QFile livro(caminho);
        if (!livro.open(QIODevice::ReadOnly) || !arquivo.resize(inicio) || !arquivo.seek(inicio))
            return Fim::Falhou;
        const qint64 tamanho = livro.size();
        if (tamanho > ArquivoBackup::kMaiorEntrada)
            return Fim::GrandeDemais;
        const QByteArray cabecalho = ArquivoBackup::Cabecalho(ArquivoBackup::kNomeDoLivro, tamanho);
        if (arquivo.write(cabecalho) != cabecalho.size())
            return Fim::Falhou;
        const Fim fim = Copiar(livro, tamanho, arquivo);
        if (fim == Fim::Interrompido || parado.Continua())
            return fim;
    }
    return Fim::Falhou;
}

Fim ArquivadorDoLivro::EscreverFigura(QFile &arquivo, const QString &figura)
{
    // The entry knows the picture by its cut name; on disk a longer one may stand uncut.
    const QString nome = ArquivoBackup::NomeNaEntrada(figura);
    QString caminho = m_figuras.Caminho(nome);
    if (!QFileInfo(caminho).isFile())
        caminho = m_figuras.Caminho(figura);
    QFile origem(caminho);
    if (!ArquivoBackup::NomeAceito(nome) || !QFileInfo(caminho).isFile() || !origem.open(QIODevice::ReadOnly))
        return Fim::Feito; // a row may name a picture that is missing
    const qint64 tamanho = origem.size();
    if (tamanho == 0)
        return Fim::Feito;
    if (tamanho > ArquivoBackup::kMaiorEntrada)
        return Fim::GrandeDemais;
    const QByteArray cabecalho = ArquivoBackup::Cabecalho(nome, tamanho);
    if (arquivo.write(cabecalho) != cabecalho.size())
        return Fim::Falhou;
    return Copiar(origem, tamanho, arquivo);
}

Fim ArquivadorDoLivro::Copiar(QFile &origem, qint64 tamanho, QFile &arquivo)
{
    std::vector<char> bloco(std::min(tamanho, kBloco));
    for (qint64 falta = tamanho; falta > 0;) {
        const qint64 bytes = origem.read(bloco.data(), std::min<qint64>(falta, kBloco));
        if (bytes <= 0 || arquivo.write(bloco.data(), bytes) != bytes)
            return Fim::Falhou;
        falta -= bytes;
        if (!m_pausa())
            return Fim::Interrompido;
    }
    return Fim::Feito;
}
