// A second process for the tests of failures: killed in mid-save, run with other rights, or holding a lock.
//   processo_store salvar FOLDER      saves recipes without end, one line of output after each statement
//   processo_store criar FOLDER       makes books in FOLDER/0, FOLDER/1 ... without end
//   processo_store inserir FOLDER     inserts one recipe; prints "ok" or the error's text
//   processo_store inserir-sem-disco FOLDER    the same, and no file may grow beyond 1000 bytes
//   processo_store evoluir FOLDER     prints "pronto", then brings the book's schema up to today's
//   processo_store remessa FOLDER     the same as "salvar", gathered; prints the number of each recipe
//   processo_store trancar FOLDER MS  holds the book's exclusive lock for that long after printing "trancado"

#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QDir>
#include <QThread>

#include <csignal>
#include <cstdio>

#include <sqlite3.h>
#include <sys/resource.h>

using namespace Comandos;

namespace
{
const QDate kDia(2005, 11, 21);

void Dizer(const QString &texto)
{
    std::puts(qPrintable(texto));
    std::fflush(stdout);
}

Receita UmaReceita(const QString &nome)
{
    Receita r;
    r.Nome = nome;
    r.Modo = QString("Misture tudo. ").repeated(300);
    return r;
}

void Salvar(const Banco &banco)
{
    for (int i = 0;; ++i) {
        banco.ExecutarSQL(SqlInserirReceita(UmaReceita(QString("Receita %1").arg(i)), kDia));
        Dizer(QString("receita %1").arg(i));
        const qint64 lngReceita = banco.AbrirRecordset(SqlMaiorNumero()).Valor(0).toLongLong();
        Receita receita = UmaReceita(QString("Receita %1").arg(i));
        receita.Porcoes = QString::number(i);
        banco.ExecutarSQL(SqlAlterarReceita(receita, lngReceita, Figura::Mantida));
        Dizer(QString("porcoes %1").arg(i));
        banco.ExecutarSQL(SqlExcluirIngredientes(lngReceita));
        for (int j = 0; j < 3; ++j) {
            const QString linha = QString("%1-%2").arg(i).arg(j);
            banco.ExecutarSQL(SqlInserirIngrediente(lngReceita, linha, "1", "kg"));
            Dizer("linha " + linha);
        }
    }
}

void Criar(const QString &pasta)
{
    Dizer("pronto");
    for (int i = 0;; ++i) {
        const QString livro = pasta + "/" + QString::number(i);
        QDir().mkpath(livro);
        Banco(livro).AbrirRecordset(SqlLista());
    }
}

void Inserir(const Banco &banco)
{
    banco.ExecutarSQL(SqlInserirReceita(UmaReceita("Inserida"), kDia));
    Dizer("ok");
}

void Trancar(const Banco &banco, unsigned long ms)
{
    sqlite3 *conexao = nullptr;
    if (sqlite3_open(banco.CaminhoDoLivro().toUtf8().constData(), &conexao) != SQLITE_OK ||
        sqlite3_exec(conexao, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) != SQLITE_OK)
        qFatal("%s", sqlite3_errmsg(conexao));
    Dizer("trancado");
    QThread::msleep(ms);
    sqlite3_close(conexao);
}
} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    const QString modo = QString::fromLocal8Bit(argv[1]);
    const QString pasta = QFile::decodeName(argv[2]);
    const Banco banco(pasta);
    try {
        if (modo == "salvar")
            Salvar(banco);
        else if (modo == "criar")
            Criar(pasta);
        else if (modo == "trancar")
            Trancar(banco, QByteArray(argv[3]).toULong());
        else if (modo == "evoluir") {
            Dizer("pronto");
            banco.Evoluir({});
        } else if (modo == "remessa") {
            const Banco::Remessa remessa(banco);
            for (int i = 1;; ++i) {
                banco.ExecutarSQL(SqlInserirReceita(UmaReceita(QString("Receita %1").arg(i)), kDia));
                Dizer(QString::number(i));
            }
        } else if (modo == "inserir-sem-disco") {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limite = {1000, 1000};
            if (setrlimit(RLIMIT_FSIZE, &limite) != 0)
                return 2;
            Inserir(banco);
        } else
            Inserir(banco);
    } catch (const ErroBanco &erro) {
        std::puts(erro.what());
        return 1;
    }
    return 0;
}
