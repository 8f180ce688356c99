#include "editor/GravarReceita.h"

#include "base/Relogio.h"
#include "base/Texto.h"
#include "editor/LinhaIngrediente.h"
#include "editor/RecusaDeGravacao.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QFile>
#include <QRegularExpression>

namespace
{
/// A pasted text can hold the one character that no statement may.
QString SemNulos(QString texto)
{
    return texto.remove(QChar(0));
}
} // namespace

Comandos::Receita ReceitaDaTela(const ReceitaNaTela &tela)
{
    Comandos::Receita receita;
    receita.Nome = SemNulos(tela.txtNome);
    receita.Classificacao = SemNulos(tela.cmbTipo);
    receita.Modo = SemNulos(tela.txtModo);
    receita.Porcoes = SemNulos(tela.txtPorcoes);
    receita.Preparo = SemNulos(tela.txtPreparo);
    receita.Calorias = SemNulos(tela.txtCalorias);
    receita.Observacao = SemNulos(tela.txtObs);
    receita.Tipo_Calorias = tela.optReceita ? "R" : tela.optPorcao ? "P" : "";
    return receita;
}

namespace
{
using Onde = RecusaDeGravacao::Onde;

const auto kNadaGravado = QStringLiteral("\r\n\r\nNada foi gravado.");

/// What stands unquoted in a statement must be one number for the engine: digits, a sign before them, a point
/// between them.
bool NumeroAceito(const QString &valor)
{
    static const QRegularExpression formato("\\A-?[0-9]+(\\.[0-9]+)?\\z");
    return formato.match(Comandos::Numero(valor)).hasMatch();
}

void ConferirNumero(Onde onde, const QString &campo, const QString &valor)
{
    if (NumeroAceito(valor))
        return;
    throw RecusaDeGravacao(onde, QString("O campo %1 tem \"%2\", que não é um número aceito pelo livro.\r\n\r\n"
                                         "Escreva um número inteiro, sem vírgula.")
                                         .arg(campo, Aparar(valor)) +
                                     kNadaGravado);
}

[[noreturn]] void RecusarLinha(qsizetype i, const LinhaIngrediente &linha, const QString &motivo)
{
    const QString texto = linha.Texto();
    constexpr qsizetype kMostrados = 80;
    throw RecusaDeGravacao(
        Onde::Linha,
        QString("O ingrediente %1, \"%2\", não pode ser gravado assim.\r\n\r\n%3%4\r\n\r\n%5")
            .arg(QString::number(i + 1),
                 texto.size() > kMostrados ? texto.first(kMostrados) + "..." : texto,
                 linha.quantidade.contains('\'')
                     ? QString("A quantidade não pode ter apóstrofo ('): retire-o e salve de novo.")
                     : QString("Altere-o e salve de novo."),
                 kNadaGravado, motivo),
        i);
}

QString SqlDaLinha(qint64 lngReceita, const LinhaIngrediente &linha)
{
    return Comandos::SqlInserirIngrediente(lngReceita, linha.ingrediente, linha.quantidade, linha.unidade);
}

QList<LinhaIngrediente> LinhasDaTela(const ReceitaNaTela &tela)
{
    QList<LinhaIngrediente> linhas;
    linhas.reserve(tela.ingredientes.size());
    for (const QString &tag : tela.ingredientes)
        linhas += LinhaIngrediente::DoTag(SemNulos(tag));
    return linhas;
}

/// Throws RecusaDeGravacao for a value that some statement of the save would stumble over.
void Conferir(const Banco &banco, const ReceitaNaTela &tela, const QList<LinhaIngrediente> &linhas,
              const QDate &hoje)
{
    const Comandos::Receita receita = ReceitaDaTela(tela);
    ConferirNumero(Onde::Porcoes, "Rendimento", receita.Porcoes);
    ConferirNumero(Onde::Calorias, "Calorias", receita.Calorias);
    // A new recipe's number is not known yet; any number makes the same statement.
    const qint64 lngReceita = tela.txtNroReceita.toLongLong();
    QStringList comandos = {Comandos::SqlInserirReceita(receita, hoje),
                            Comandos::SqlAlterarReceita(receita, lngReceita, Comandos::Figura::Mantida)};
    const qsizetype antes = comandos.size();
    for (const LinhaIngrediente &linha : linhas)
        comandos += SqlDaLinha(lngReceita, linha);
    const auto recusa = banco.Conferir(comandos);
    if (!recusa)
        return;
    if (recusa->qual >= antes)
        RecusarLinha(recusa->qual - antes, linhas[recusa->qual - antes], recusa->motivo);
    throw RecusaDeGravacao(Onde::Receita, "A receita não pode ser gravada como está." + kNadaGravado +
                                              "\r\n\r\n" + recusa->motivo);
}

void Incluir(const Banco &banco, const Figuras &figuras, const QDate &hoje, ReceitaNaTela &tela)
{
    banco.ExecutarSQL(Comandos::SqlInserirReceita(ReceitaDaTela(tela), hoje));
    // From here on the recipe is in the book: a save that fails below and is repeated must not enter it twice.
    tela.txtNroReceita = QString::number(banco.UltimoNumero());
    const qint64 lngReceita = banco.AbrirRecordset(Comandos::SqlMaiorNumero()).Valor(0).toLongLong();
    tela.txtNroReceita = QString::number(lngReceita);
    // A recipe that was deleted meanwhile took the file of its picture along.
    const bool semFigura = tela.imgFigura.ENenhuma() || (tela.imgFigura.EGuardada() && tela.figuraAntiga.isEmpty());
    if (semFigura)
        return;
    banco.ExecutarSQL(Comandos::SqlGravarFigura(lngReceita));
    if (tela.imgFigura.ENova())
        figuras.CopiarFigura(tela.imgFigura.Tag(), lngReceita);
    else
        figuras.GravarFigura(tela.figuraAntiga, lngReceita);
}

/// False when the recipe is no longer in the book; nothing has changed then.
bool Alterar(const Banco &banco, const Figuras &figuras, const ReceitaNaTela &tela)
{
    const qint64 lngReceita = tela.txtNroReceita.toLongLong();
    Comandos::Figura figura = Comandos::Figura::Mantida;
    QString semUso;
    if (tela.imgFigura.ENova()) {
        figura = Comandos::Figura::Nova;
    } else if (tela.imgFigura.ENenhuma()) {
        // While the row still names the file: afterwards nobody would know which one to remove.
        figura = Comandos::Figura::Nenhuma;
        semUso = figuras.CaminhoDaReceita(lngReceita);
    }
    if (banco.ExecutarSQL(Comandos::SqlAlterarReceita(ReceitaDaTela(tela), lngReceita, figura)) == 0)
        return false;
    // The picture goes with the row that names it: one that could not be written keeps the picture it had.
    if (figura == Comandos::Figura::Nova)
        figuras.CopiarFigura(tela.imgFigura.Tag(), lngReceita);
    else if (!semUso.isEmpty())
        QFile::remove(semUso);
    banco.ExecutarSQL(Comandos::SqlExcluirIngredientes(lngReceita));
    return true;
}
} // namespace

qint64 GravarReceita(const Banco &banco, const Figuras &figuras, const Relogio &relogio, ReceitaNaTela &tela)
{
    const QList<LinhaIngrediente> linhas = LinhasDaTela(tela);
    const QDate hoje = relogio.Hoje();
    Conferir(banco, tela, linhas, hoje);
    if (!tela.txtNroReceita.isEmpty())
        banco.AntesDeMudar({tela.txtNroReceita.toLongLong()});
    if (tela.txtNroReceita.isEmpty() || !Alterar(banco, figuras, tela))
        Incluir(banco, figuras, hoje, tela);
    const qint64 lngReceita = tela.txtNroReceita.toLongLong();
    for (const LinhaIngrediente &linha : linhas)
        banco.ExecutarSQL(SqlDaLinha(lngReceita, linha));
    banco.Firmar();
    return lngReceita;
}
