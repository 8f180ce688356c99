#pragma once

#include "backup/ArquivadorDoLivro.h"
#include "backup/ArquivoBackup.h"

#include <QList>
#include <QString>

class Avisos;
class Banco;
class Figuras;
class JanelaDoBackup;
class OperacaoLonga;
class PainelMensagem;
class Relogio;
class SeletorArquivos;
class Telas;

/**
 * The toolbar's backup and restore buttons: the whole recipe book, database and pictures, into one ".bck"
 * file and back. Format and safety lie in ArquivoBackup.h, RecipienteEmFatias.h and RestauracaoDoLivro.h.
 *
 * Both let the window live while they work; a click on either meanwhile does nothing. When the program is
 * told to end they stop, clean up and leave everything as it was.
 */
class modBackup
{
public:
    modBackup(const Banco &banco, const Figuras &figuras, Avisos &avisos, SeletorArquivos &seletor,
              PainelMensagem &painel, Telas &telas, const Relogio &relogio, JanelaDoBackup &janela);
    /// AntesDeGravar().
    ~modBackup();
    modBackup(const modBackup &) = delete;
    modBackup &operator=(const modBackup &) = delete;

    /// Asks for a file and saves the book into it. An earlier file of that name is replaced, without a
    /// question, only once the new one has been unpacked again and found whole. Throws ErroBanco.
    void imgBackup_Click();

    /// Asks for a backup file and, once it has been read through, found sound and the user agrees, puts its
    /// contents in place of the book. Afterwards no view is shown.
    void imgRestore_Click();

    /// Finishes a restore that was cut off after it had been decided. To be called at the start of the
    /// program, before the book is first read, by the copy that owns the application folder. When something
    /// was saved since the decision, the book is copied once more first, and the user is told.
    void ConcluirRestauracao();

    /// Before anything is written into the book, and at the program's end: takes back a restore that was
    /// reported as impossible and that the drive would not let go of then.
    void AntesDeGravar();

private:
    /// How a restore ended; the last two failed before and after the book began to change.
    enum class Desfecho { Feito, Desistiu, Invalido, LivroEstranho, Ocupado, NadaAlterado, Incompleto };

    QString PastaDoDialogo() const;
    Fim Salvar(const QString &destino);
    Fim EscreverArquivo(QFile &arquivo);
    Fim CompactarPara(QFile &arquivo, const QString &destino, OperacaoLonga &operacao);
    Desfecho Restaurar(const QString &origem);
    Desfecho Substituir(QFile &arquivo, const QList<ArquivoBackup::Entrada> &entradas);
    QString ProblemaDoLivroRestaurado() const;

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    SeletorArquivos &m_seletor;
    PainelMensagem &m_painel;
    Telas &m_telas;
    const Relogio &m_relogio;
    JanelaDoBackup &m_janela;
    QString m_arquivoQueFalhou;
    QString m_copiaGuardada;  ///< path of the book from before the last restore, "" when there was none
    int m_quantasFiguras = 0; ///< rows of the backup under way
    bool m_aDescartar = false; ///< a restore was reported as impossible and could not be taken back
};
