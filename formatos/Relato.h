#pragma once

#include <QList>
#include <QString>

namespace Formatos
{
/// One thing the user should know about a conversion.
struct Aviso {
    QString arquivo; ///< the file as the user named it, with what lies inside an archive behind it
    QString receita; ///< "" when it concerns the file
    QString texto;   ///< a sentence in Portuguese
};

/**
 * What is told while files are read and written: nothing that does not fit is lost without a line here.
 */
class Relato
{
public:
    /// The file, and the recipe, that the next warnings are about.
    void DefinirArquivo(const QString &arquivo)
    {
        m_arquivo = arquivo;
        m_receita.clear();
    }
    void DefinirReceita(const QString &receita) { m_receita = receita; }

    void Avisar(const QString &texto) { m_avisos.append({m_arquivo, m_receita, texto}); }
    /// A recipe that was left out, and why.
    void Pular(const QString &texto)
    {
        ++m_puladas;
        Avisar("Receita deixada de fora: " + texto);
    }
    /// Characters that had to become "?".
    void ContarSubstituidos(int quantos) { m_substituidos += quantos; }
    /// A picture that is named but cannot be had.
    void FaltaFigura(const QString &texto)
    {
        ++m_figurasFaltam;
        Avisar(texto);
    }

    const QString &Arquivo() const { return m_arquivo; }
    const QList<Aviso> &Avisos() const { return m_avisos; }
    int Puladas() const { return m_puladas; }
    int Substituidos() const { return m_substituidos; }
    int FigurasFaltam() const { return m_figurasFaltam; }

private:
    QString m_arquivo;
    QString m_receita;
    QList<Aviso> m_avisos;
    int m_puladas = 0;
    int m_substituidos = 0;
    int m_figurasFaltam = 0;
};
} // namespace Formatos
