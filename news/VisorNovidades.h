#pragma once

#include <QTextBrowser>
#include <QUrl>

#include <memory>

class Abridor;
class PastaLocal;

/**
 * The view of the news page (WbBsr1): shows a cleaned local page, and nothing that would have to be fetched.
 *
 * The only resources it knows are the pictures that the cleaned page names; every other request, whoever
 * makes it, gets an empty picture or an empty text. A click on a link opens the user's browser or mail
 * program, a click on a link within the page scrolls to its place.
 */
class VisorNovidades : public QTextBrowser
{
    Q_OBJECT

public:
    explicit VisorNovidades(Abridor &abridor, QWidget *parent = nullptr);
    ~VisorNovidades() override;

    /// Shows the page `caminho` (native path) with the pictures of its folder.
    /// @param base address of the folder that the page came from, for its relative links
    void Navegar(const QString &caminho, const QUrl &base);

    QVariant loadResource(int type, const QUrl &name) override;

private:
    void Abrir(const QUrl &link);

    Abridor &m_abridor;
    QUrl m_base;
    std::unique_ptr<PastaLocal> m_pasta;
};
