#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace Formatos
{
/**
 * The word list of the ingredient reader, from the plain file palavras.txt that lies in the program. All
 * words are folded by Dobrar(); what they are compared with must be too.
 */
class Palavras
{
public:
    static const Palavras &Da();

    /// The words of a section, blanks apart.
    const QSet<QString> &Conjunto(const QString &secao) const;
    /// The lines of a section, longest first: texts of several words.
    const QStringList &Frases(const QString &secao) const;
    /// The lines "text=value" of a section, longest text first.
    const QList<std::pair<QString, QString>> &Pares(const QString &secao) const;

    /// Singular and plural of the units, as the file writes them.
    const QList<std::pair<QString, QString>> &Plurais() const { return m_plurais; }

    /// Whether it is a unit, with or without a dot.
    bool EUnidade(const QString &dobrada) const;
    bool EUnidadeInglesa(const QString &dobrada) const;

private:
    Palavras();

    QHash<QString, QSet<QString>> m_conjuntos;
    QHash<QString, QStringList> m_frases;
    QList<std::pair<QString, QString>> m_plurais;
    QSet<QString> m_unidades, m_inglesas;
    QHash<QString, QList<std::pair<QString, QString>>> m_pares;
};
} // namespace Formatos
