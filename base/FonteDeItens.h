#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/**
 * The texts that a combo box offers. They may still be on their way when the combo box gets them: whoever
 * asks waits for all.
 */
class FonteDeItens
{
public:
    virtual ~FonteDeItens() = default;

    virtual int Quantos() = 0;
    virtual QString Item(int qual) = 0;
    /// The first text, in the list's order, that begins with `prefixo`, letter case ignored, accents kept; -1
    /// for none. An empty prefix finds nothing: an emptied field asks for no proposal.
    virtual int Procurar(QStringView prefixo) = 0;
    /// Whether one of the texts is `valor`, both in upper case.
    virtual bool Contem(const QString &valor) = 0;
};

/// Texts that are all there.
class FonteDeTextos : public FonteDeItens
{
public:
    explicit FonteDeTextos(QStringList textos = {})
        : m_textos(std::move(textos))
    {
    }

    int Quantos() override { return static_cast<int>(m_textos.size()); }
    QString Item(int qual) override { return m_textos.value(qual); }
    int Procurar(QStringView prefixo) override;
    bool Contem(const QString &valor) override;
    void Acrescentar(const QString &texto) { m_textos += texto; }

private:
    QStringList m_textos;
};
