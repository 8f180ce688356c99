#include "backup/ArquivoBackup.h"

#include "base/PaginaCodigo.h"
#include "base/Texto.h"

#include <QIODevice>

#include <algorithm>
#include <optional>

namespace
{
/// The length field: nine digits and nothing else.
std::optional<qint64> Comprimento(QByteArrayView campo)
{
    qint64 n = 0;
    for (const char c : campo) {
        if (c < '0' || c > '9')
            return std::nullopt;
        n = n * 10 + (c - '0');
    }
    return n;
}
} // namespace

const QString ArquivoBackup::kNomeDoLivro = "dadosr.lst";

QString ArquivoBackup::NomeNaEntrada(const QString &nome)
{
    return Aparar(nome.left(kTamanhoDoNome));
}

QByteArray ArquivoBackup::Cabecalho(const QString &nome, qint64 tamanho)
{
    return PaginaCodigo::ParaAnsi(nome).leftJustified(kTamanhoDoNome, ' ', true) +
           QByteArray::number(tamanho).rightJustified(kTamanhoDoCabecalho - kTamanhoDoNome, '0');
}

bool ArquivoBackup::NomeAceito(const QString &nome)
{
    if (nome.isEmpty() || nome == "." || nome.contains(".."))
        return false;
    return std::none_of(nome.begin(), nome.end(), [](QChar c) {
        return c == '/' || c == '\\' || c == ':' || c.category() == QChar::Other_Control;
    });
}

bool ArquivoBackup::Ler(QIODevice &arquivo, QList<Entrada> &entradas)
{
    entradas.clear();
    const qint64 fim = arquivo.size() - 1; // the last byte is the container's, not the archive's
    qint64 posicao = 0;
    while (fim - posicao >= kTamanhoDoCabecalho) {
        if (!arquivo.seek(posicao))
            return false;
        const QByteArray cabecalho = arquivo.read(kTamanhoDoCabecalho);
        if (cabecalho.size() != kTamanhoDoCabecalho)
            return false;
        const QString nome = Aparar(PaginaCodigo::DeAnsi(QByteArrayView(cabecalho).first(kTamanhoDoNome)));
        const std::optional<qint64> tamanho = Comprimento(QByteArrayView(cabecalho).sliced(kTamanhoDoNome));
        posicao += kTamanhoDoCabecalho;
        if (!tamanho || *tamanho > fim - posicao || !NomeAceito(nome))
            return false;
        if (entradas.isEmpty() && nome != kNomeDoLivro)
            return false;
        entradas.append({nome, posicao, *tamanho});
        posicao += *tamanho;
    }
    return !entradas.isEmpty();
}
