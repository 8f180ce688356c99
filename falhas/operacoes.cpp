// One operation of the program on one folder, in a process of its own, so that falhas.c can be loaded in
// front of it:
//   operacoes OPERATION FOLDER     carries it out; 0 when it succeeded, 1 when it failed and said so
//   operacoes estado FOLDER        what the book holds, a line a recipe; 2 when the book is not sound
#include "app/Sobras.h"
#include "backup/tests/Duplos.h"
#include "base/Abridor.h"
#include "base/ArquivoSeguro.h"
#include "browse/ExcluirReceita.h"
#include "editor/GravarReceita.h"
#include "editor/LinhaIngrediente.h"
#include "mail/EnvioEmail.h"
#include "packages/ImportacaoDoPacote.h"
#include "packages/Lixeira.h"
#include "store/Funcoes.h"
#include "store/ReceitaNaTela.h"

#include <QCoreApplication>

#include <cstdio>
#include <memory>

#include <sqlite3.h>

namespace
{
class NaTelaDeDados : public TelasDeTeste
{
public:
    QString TelaAtual() const override { return "Detalhe"; }
};

class SemAbrir : public Abridor
{
public:
    void AbrirArquivo(const QString &) override {}
    void AbrirEndereco(const QUrl &) override {}
};

/// The engine's own examination, and a readable list of everything.
int MostrarEstado(const Cozinha &cozinha)
{
    sqlite3 *conexao = nullptr;
    bool inteiro = false;
    cozinha.banco.LerUmaVez();
    const QByteArray caminho = QFile::encodeName(cozinha.banco.CaminhoDoLivro());
    if (sqlite3_open_v2(caminho.constData(), &conexao, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK &&
        Funcoes::Registrar(conexao) == SQLITE_OK) {
        sqlite3_stmt *comando = nullptr;
        if (sqlite3_prepare_v2(conexao, "PRAGMA integrity_check", -1, &comando, nullptr) == SQLITE_OK &&
            sqlite3_step(comando) == SQLITE_ROW)
            inteiro = QByteArray(reinterpret_cast<const char *>(sqlite3_column_text(comando, 0))) == "ok";
        sqlite3_finalize(comando);
    }
    sqlite3_close(conexao);
    for (RecordSet rs = cozinha.banco.AbrirRecordset(Comandos::SqlLista()); !rs.Eof(); rs.MoveNext()) {
        const qint64 numero = rs.Valor(u"id_receitas").toLongLong();
        QStringList linhas;
        for (RecordSet r = cozinha.banco.AbrirRecordset(Comandos::SqlIngredientes(numero)); !r.Eof();
             r.MoveNext())
            linhas += r.Texto(u"Quantidade") + ' ' + r.Texto(u"Ingrediente");
        QFile figura(rs.Texto(u"Figura").isEmpty() ? QString()
                                                   : cozinha.figuras.Caminho(rs.Texto(u"Figura")));
        const QByteArray bytes =
            figura.open(QIODevice::ReadOnly) ? figura.readAll() : QByteArray("sem figura");
        std::printf("%lld|%s|%s|%s|%s\n", static_cast<long long>(numero),
                    rs.Texto(u"Nome").toUtf8().constData(), rs.Texto(u"Modo").toUtf8().constData(),
                    linhas.join(',').toUtf8().constData(), bytes.left(40).constData());
    }
    return inteiro ? 0 : 2;
}

ReceitaNaTela Tela(const QString &numero, const QString &nome, const QString &figura)
{
    ReceitaNaTela tela;
    tela.txtNroReceita = numero;
    tela.txtNome = nome;
    tela.txtModo = "Misture e asse";
    tela.ingredientes = {LinhaIngrediente::De("2", "", "ovos").Tag(),
                         LinhaIngrediente::De("1", "copo", "leite").Tag()};
    tela.imgFigura = figura.isEmpty() ? EstadoDaFigura::Nenhuma() : EstadoDaFigura(figura);
    return tela;
}

void Executar(const QString &operacao, Cozinha &c)
{
    const RelogioDeTeste relogio;
    const QString outras = c.pasta + "/../entrada/"; // what the operations read; not watched
    const Lixeira lixeira(c.banco, c.figuras, relogio);
    c.banco.DefinirAntesDeMudar([&lixeira](const QList<qint64> &numeros) { lixeira.Guardar(numeros); });
    if (operacao == "inicio") {
        RemoverSobras(c.banco);
        c.banco.AbrirRecordset(Comandos::SqlLista());
        c.backup.ConcluirRestauracao();
    } else if (operacao == "salvar") {
        ReceitaNaTela tela = Tela({}, "Nova", outras + "figura");
        GravarReceita(c.banco, c.figuras, relogio, tela);
    } else if (operacao == "mudar") {
        ReceitaNaTela tela = Tela("2", "Mudada", outras + "figura");
        GravarReceita(c.banco, c.figuras, relogio, tela);
    } else if (operacao == "excluir") {
        c.banco.AntesDeMudar({2});
        ExcluirReceita(c.banco, 2);
    } else if (operacao == "importar") {
        ImportacaoDoPacote importacao(c.banco, c.figuras, c.avisos, relogio);
        if (importacao.Carregar(outras + "pacote.lr$")) {
            importacao.Importar([](int) { return true; }, [](int) {});
            importacao.Concluir();
        }
    } else if (operacao == "email") {
        SemAbrir abridor;
        const NaTelaDeDados telas;
        ReceitaNaTela receita;
        receita.txtNome = "Bolo";
        receita.txtModo = QString("Asse ").repeated(2000);
        EnvioEmail(c.banco, c.figuras, c.avisos, telas, abridor, "https://www.tamarel.example")
            .imgEmail_Click(receita);
    } else if (operacao == "backup") {
        c.Backup(c.pasta + "/copia.bck");
    } else if (operacao == "restaurar") {
        c.Restaurar(outras + "outro.bck");
    } else {
        throw Erro("Operação desconhecida: " + operacao);
    }
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication aplicacao(argc, argv);
    const QString operacao = aplicacao.arguments().value(1);
    Disco::SuportarLimiteDeTamanho();
    Cozinha cozinha(aplicacao.arguments().value(2));
    cozinha.banco.DefinirEspera(500);
    QString dito;
    try {
        if (operacao == "estado")
            return MostrarEstado(cozinha);
        Executar(operacao, cozinha);
        for (const QString &texto : cozinha.avisos.textos)
            if (!texto.contains("com Sucesso"))
                dito = texto;
    } catch (const std::exception &erro) {
        dito = QString::fromUtf8(erro.what());
    }
    if (!dito.isEmpty())
        std::printf("%s\n", dito.toUtf8().constData());
    return dito.isEmpty() ? 0 : 1;
}
