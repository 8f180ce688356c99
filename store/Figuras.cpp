#include "store/Figuras.h"

#include "base/ArquivoSeguro.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

#include <sys/stat.h>

namespace
{
constexpr QLatin1String kPasta("Fotos");

/// A picture's own name ("F0000012.img") has four letters.
constexpr qsizetype kLetrasDeUmaFigura = 4;

bool ELetra(QChar c)
{
    return c.toLower() != c.toUpper();
}

/// The spelling of `nome` that lies in `pasta`, each one being asked for; empty when none does. So many
/// questions cost the same in a full folder as in an empty one, which listing it does not.
QString GrafiaNoDisco(const QString &pasta, const QString &nome)
{
    QList<qsizetype> letras;
    for (qsizetype i = 0; i < nome.size(); ++i)
        if (ELetra(nome[i]))
            letras += i;
    for (unsigned caixas = 0; caixas < 1U << letras.size(); ++caixas) {
        QString grafia = nome;
        for (qsizetype i = 0; i < letras.size(); ++i)
            grafia[letras[i]] = caixas >> i & 1U ? nome[letras[i]].toUpper() : nome[letras[i]].toLower();
        if (QFileInfo::exists(pasta + '/' + grafia))
            return grafia;
    }
    return {};
}

/// The entry of `pasta` that has this name, in this or another letter case; the name itself when there is
/// none.
QString NomeNoDisco(const QString &pasta, const QString &nome)
{
    if (QFileInfo::exists(pasta + '/' + nome))
        return nome;
    if (std::count_if(nome.begin(), nome.end(), ELetra) <= kLetrasDeUmaFigura) {
        const QString grafia = GrafiaNoDisco(pasta, nome);
        return grafia.isEmpty() ? nome : grafia;
    }
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

/// By promise nobody is told of a failure; the earlier picture stays.
template <class Escrita>
bool Gravar(const QString &caminho, const Banco &banco, Escrita escrever)
{
    try {
        ArquivoSeguro destino(caminho, {.modelo = banco.CaminhoDoLivro()});
        destino.Abrir();
        if (!escrever(destino))
            return false;
        destino.Confirmar();
        return true;
    } catch (const Disco::ErroArquivo &) {
        return false;
    }
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

QString Figuras::CaminhoDaReceita(qint64 lngReceita) const
{
    const RecordSet rs = m_banco.AbrirRecordset(Comandos::SqlFigura(lngReceita));
    return rs.Eof() ? QString() : Caminho(rs.Texto(0));
}

void Figuras::ApagarFigura(qint64 lngReceita) const
{
    const QString caminho = CaminhoDaReceita(lngReceita);
    if (!caminho.isEmpty())
        QFile::remove(caminho); // a missing picture is no failure
}

void Figuras::CopiarFigura(const QString &origem, qint64 lngReceita) const
{
    QFile arquivo(origem);
    if (!QFileInfo(origem).isFile() || !arquivo.open(QIODevice::ReadOnly))
        return; // by promise: the row may name a picture that is missing
    PrepararPasta();
    Gravar(Caminho(Comandos::NomeFigura(lngReceita)), m_banco,
           [&](ArquivoSeguro &destino) { return Disco::CopiarResto(arquivo, destino.Arquivo()); });
}

void Figuras::GravarFigura(const QByteArray &bytes, qint64 lngReceita) const
{
    QByteArray falta = bytes;
    GravarFigura([&falta] { return std::exchange(falta, {}); }, lngReceita); // by promise, as above
}

bool Figuras::GravarFigura(const std::function<QByteArray()> &proximo, qint64 lngReceita) const
{
    PrepararPasta();
    return Gravar(Caminho(Comandos::NomeFigura(lngReceita)), m_banco, [&proximo](ArquivoSeguro &destino) {
        for (QByteArray bloco = proximo(); !bloco.isEmpty(); bloco = proximo())
            destino.Escrever(bloco);
        return true;
    });
}

/// Makes the folder; what a killed program left in it goes before the first picture is written.
void Figuras::PrepararPasta() const
{
    const QString pasta = PastaDeFotos(m_banco);
    QDir().mkpath(pasta);
    if (!m_semSobras)
        ArquivoSeguro::RemoverSobras(pasta);
    m_semSobras = true;
}

namespace
{
/// What tells one state of a file from another.
struct Impressao {
    dev_t dispositivo = 0;
    ino_t arquivo = 0;
    off_t tamanho = 0;
    qint64 alterado = 0; ///< nanoseconds
    qint64 mudado = 0;

    bool operator==(const Impressao &) const = default;
};

std::optional<Impressao> Tirar(const QString &caminho)
{
    struct stat dados = {};
    if (::stat(QFile::encodeName(caminho).constData(), &dados) != 0)
        return std::nullopt;
    const auto nanos = [](const timespec &t) { return qint64(t.tv_sec) * 1'000'000'000 + t.tv_nsec; };
    return Impressao{dados.st_dev, dados.st_ino, dados.st_size, nanos(dados.st_mtim), nanos(dados.st_ctim)};
}
} // namespace

ImagemLida LerFigura(const QString &caminho)
{
    // Opening a recipe shows its picture in the card and in the editor behind it: it is decoded once. One
    // picture is kept, for as long as its file stays as it is.
    static std::optional<Impressao> s_impressao;
    static ImagemLida s_lida;
    const std::optional<Impressao> impressao = Tirar(caminho);
    if (!impressao)
        return {};
    if (impressao != s_impressao) {
        s_lida = LerArquivoDeImagem(caminho);
        s_impressao = impressao;
    }
    return s_lida;
}

QImage CarregarImagem(const QString &caminho)
{
    return LerFigura(caminho).imagem;
}
