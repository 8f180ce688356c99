#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <stdexcept>

/// One ingredient line; quantity and unit may be empty.
struct IngredienteExemplo {
    QString quantidade;
    QString unidade;
    QString ingrediente;
};

/// A recipe as it is written in a text file. What the file leaves out is empty or 0.
struct ReceitaExemplo {
    QString nome;
    QString tipo;
    QString origem;
    QString preparo;
    int porcoes = 0;
    int calorias = 0;
    char tipoCalorias = 0; ///< 'R' for the whole recipe, 'P' for a serving, 0 for neither
    QString figura;        ///< name of a file in the folder of pictures, without a path
    QList<IngredienteExemplo> ingredientes;
    QString modo;       ///< paragraphs joined by CR LF
    QString observacao; ///< likewise
};

/// A recipe file that cannot be read; what() is UTF-8 and begins with the file and, if there is one, the
/// line.
class ErroExemplo : public std::runtime_error
{
public:
    /// `linha` counts from 1; 0 means the file as a whole.
    ErroExemplo(const QString &arquivo, int linha, const QString &motivo);
    int Linha() const { return m_linha; }

private:
    int m_linha;
};

/// Reads recipes from plain text. The format is described in README.md beside this file.
namespace LeitorExemplos
{
/// Reads one file. Throws ErroExemplo.
ReceitaExemplo Ler(const QString &arquivo);

/// The recipe in `bytes`; `arquivo` only serves to name the file in an error. Throws ErroExemplo.
ReceitaExemplo Interpretar(const QByteArray &bytes, const QString &arquivo);

/// Reads every *.txt file of a folder, in the order of their names; throws ErroExemplo at the first bad one,
/// or when the folder holds none.
QList<ReceitaExemplo> LerPasta(const QString &pasta);
} // namespace LeitorExemplos
