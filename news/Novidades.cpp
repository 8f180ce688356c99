#include "news/Novidades.h"

#include "base/ArquivoSeguro.h"
#include "base/EventosPendentes.h"

#include <QDir>
#include <QFileInfo>

Novidades::Novidades(std::unique_ptr<ClienteWeb> cliente, const QString &site, const QString &pasta,
                     const LimitesVisita &limites)
    : m_internet(std::move(cliente))
    , m_base(site + "/cozinhario/")
    , m_pasta(pasta)
    , m_limites(limites)
{
}

void Novidades::BaixarNovidades(const std::function<bool()> &aoResponder)
{
    m_internet.Retomar();
    m_baixando = true;
    if (!aoResponder)
        PegarAmpulheta();
    ArquivoSeguro::RemoverSobras(m_pasta);
    QFile::remove(QDir(m_pasta).filePath("~novidade.tmp")); // what earlier versions left of a power cut
    const QDeadlineTimer prazo(m_limites.ms);
    m_bytesDaVisita = 0;
    const QByteArray lista = m_internet.LerUrl(m_base + "index.file");
    if (!lista.isEmpty()) {
        if (aoResponder && aoResponder())
            PegarAmpulheta();
        QDir().mkpath(
            m_pasta); // one that exists already, or cannot be made, shows when the files are written
        for (const ListaNovidades::Entrada &entrada : ListaNovidades::Ler(lista)) {
            if (prazo.hasExpired() || m_bytesDaVisita > m_limites.bytes || m_internet.Abandonado() ||
                Encerrando())
                break;
            BaixarItemNovidades(entrada.caminho);
        }
    }
    m_baixando = false;
    m_espera.reset();
}

void Novidades::BaixarItemNovidades(const QByteArray &entry)
{
    const QString nome = ListaNovidades::NomeLocal(entry);
    if (!ListaNovidades::NomeAceito(nome))
        return;
    const QFileInfo destino(QDir(m_pasta).filePath(nome));
    if (destino.isDir())
        return;
    const bool pagina = destino.filePath() == Pagina();
    if (destino.exists() ? !ListaNovidades::SempreBaixada(nome) : !pagina && !CabeNaPasta())
        return;
    const QByteArray texto = m_internet.LerUrl(ListaNovidades::Endereco(m_base, entry));
    m_bytesDaVisita += texto.size();
    if (texto.isEmpty() || m_bytesDaVisita > m_limites.bytes)
        return;
    try {
        ArquivoSeguro::Gravar(destino.filePath(), texto);
    } catch (const Disco::ErroArquivo &) {
        // A full disk is no different from a lost connection: what was there before is shown.
    }
}

void Novidades::PegarAmpulheta()
{
    if (m_baixando && !m_espera)
        m_espera.emplace();
}

QString Novidades::Pagina() const
{
    return QDir(m_pasta).filePath("index.htm");
}

bool Novidades::TemPagina() const
{
    return QFileInfo(Pagina()).isFile();
}

bool Novidades::CabeNaPasta() const
{
    const QDir pasta(m_pasta);
    return pasta.entryList(QDir::Files | QDir::Hidden | QDir::System).size() < m_limites.arquivosNaPasta;
}
