#pragma once

#include <QFile>
#include <QString>

/**
 * An open file that this process alone may replace: other copies of the program wait. Where the file system
 * knows no locks everything else works without.
 */
class TrancaDeArquivo
{
public:
    /// Waits for another copy's lock. Throws ErroBanco when the file cannot be opened or stays locked.
    TrancaDeArquivo(const QString &caminho, int esperaMs);

    /// For reading the file.
    QFile &Arquivo() { return m_arquivo; }
    /// Whether its name still leads to this file, unchanged since it was opened.
    bool AindaEOMesmo() const;
    bool Trancado() const { return m_trancado; }

    /// What tells one file, at one time, from any other.
    struct Retrato {
        quint64 dispositivo = 0, numero = 0;
        qint64 tamanho = -1, segundos = 0, nanossegundos = 0;
        bool operator==(const Retrato &) const = default;
    };

private:
    QFile m_arquivo;
    Retrato m_retrato;
    bool m_trancado = false;
};
