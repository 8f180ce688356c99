#pragma once

#include "news/ListaNovidades.h"
#include "news/modInternet.h"

#include "base/Ponteiro.h"

#include <QDeadlineTimer>
#include <QString>

#include <functional>
#include <optional>

/// How much one visit to the site may bring, whatever the site lists.
struct LimitesVisita {
    qint64 bytes = 32 * 1024 * 1024; ///< all files of one visit together
    int ms = 120'000;                ///< the whole visit; no further file is begun after it
    int arquivosNaPasta = 1000;      ///< a fuller local folder takes no new files, only newer ones
};

/**
 * The news on disk: fetches what the maker's site lists into the local folder.
 *
 * The page "index.htm" and the files with "bnrtml" in their name are fetched at every visit, all others once.
 * A failed download leaves the earlier file as it was. Window events run while it works, so the owner must be
 * held alive by a shared pointer for the length of a call.
 */
class Novidades
{
public:
    /**
     * @param cliente what opens addresses
     * @param site    scheme and host, no trailing slash; the files lie in its folder "/cozinhario/"
     * @param pasta   native path of the local folder "temporario"; made when the first list arrives
     */
    Novidades(std::unique_ptr<ClienteWeb> cliente, const QString &site, const QString &pasta,
              const LimitesVisita &limites = {});

    /**
     * Fetches index.file and the files it lists, under the hourglass. A list that cannot be had leaves the
     * local folder as it is. Nothing is reported. A flag that an earlier visit left set is cleared first.
     *
     * @param aoResponder for a visit that nobody asked for: the server is asked without the hourglass, and
     *                    once it has given its list this is called, which says whether the rest is seen and
     *                    the hourglass stands over it
     */
    void BaixarNovidades(const std::function<bool()> &aoResponder = {});

    /// Fetches one listed file into the local folder, unless it is there already and not of those that are
    /// fetched every time. An entry whose name is no plain file name is ignored.
    void BaixarItemNovidades(const QByteArray &entry);

    /// The hourglass for a download that began without it, because the user asks for its page now. Only a
    /// download in progress takes it.
    void PegarAmpulheta();

    /// Ends the download in progress. The next visit begins anew.
    void Abandonar() { m_internet.Abandonar(); }
    /// Whether the last visit was ended by Abandonar().
    bool Abandonada() const { return m_internet.Abandonado(); }

    /// Address of the site's folder, with its trailing slash.
    QString Base() const { return m_base; }
    QString Pasta() const { return m_pasta; }
    /// Native path of the page that is shown.
    QString Pagina() const;
    bool TemPagina() const;

private:
    bool CabeNaPasta() const;

    modInternet m_internet;
    QString m_base;
    QString m_pasta;
    LimitesVisita m_limites;
    qint64 m_bytesDaVisita = 0;
    std::optional<EsperaLonga> m_espera;
    bool m_baixando = false;
};
