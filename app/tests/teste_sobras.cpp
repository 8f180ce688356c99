// What a killed program left in the folder goes at the next start; what the user put there stays.
#include "app/Sobras.h"
#include "store/Banco.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
void Escrever(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}
} // namespace

class TesteSobras : public QObject
{
    Q_OBJECT

private slots:
    void soOQueEDoProgramaEhRemovido()
    {
        QTemporaryDir pasta;
        Banco banco(pasta.path());
        banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Bolo','Asse')");
        const QString livro = banco.CaminhoDoLivro();
        QVERIFY(QFile::copy(livro, pasta.filePath("dadosr.lst.Ant1go"))); // a copy that the user made
        {
            QTemporaryDir outra;
            const Banco vazio(outra.path());
            vazio.AbrirRecordset("Select * from Receitas");
            QVERIFY(QFile::copy(vazio.CaminhoDoLivro(), pasta.filePath("dadosr.lst.vA2io1")));
        }
        const QStringList doPrograma = {"dadosr.lst.aB3dEf",         "~dadosr-20240101-101010.lst.tmp",
                                        "PacoteReceita.lrs",         "PacoteReceitas.lrs",
                                        "~BackupCozinhario.bck.tmp", "~cozinhario-0123456789abcdef.tmp",
                                        "~temp.eml.AbCdEf"};
        for (const QString &nome : doPrograma)
            Escrever(pasta.filePath(nome), "");
        const QStringList doUsuario = {"PacoteReceita.lr$",          "PacoteReceitas.txt",
                                       "dadosr-20240101-101010.lst", "dadosr.lst.backup",
                                       "~minhas receitas.txt",       "~temp.eml"};
        for (const QString &nome : doUsuario)
            Escrever(pasta.filePath(nome), "");
        const QString alheio = pasta.filePath("alheio");
        Escrever(alheio, "alheio");
        QVERIFY(QFile::link(alheio, pasta.filePath("~livro.bck.tmp")));

        RemoverSobras(banco);
        QStringList ficam = doUsuario;
        ficam << "dadosr.lst"
              << "dadosr.lst.Ant1go"
              << "alheio";
        QStringList nomes = QDir(pasta.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
        ficam.sort();
        nomes.sort();
        QCOMPARE(nomes, ficam);
    }
};

QTEST_GUILESS_MAIN(TesteSobras)
#include "teste_sobras.moc"
