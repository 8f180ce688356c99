// What a deletion or a change takes away lies in a package that can be imported again.
#include "base/ArquivoSeguro.h"
#include "packages/ImportacaoDoPacote.h"
#include "packages/Lixeira.h"
#include "packages/tests/Duplos.h"
#include "store/Comandos.h"
#include "store/ReceitaNaTela.h"

#include <QtTest>

#include <sys/stat.h>
#include <utime.h>

namespace
{
QStringList Pacotes(const Livro &livro)
{
    return QDir(livro.Caminho("Lixeira"))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}
} // namespace

class TesteLixeira : public QObject
{
    Q_OBJECT

private slots:
    void oQueFoiGuardadoVoltaPelaImportacao()
    {
        Livro livro;
        RelogioParado relogio;
        livro.banco.ExecutarSQL(
            "Insert into Receitas(Nome,Modo,Figura) values ('Pão de/ló','Asse','F0000001.img')");
        livro.banco.ExecutarSQL(Comandos::SqlInserirIngrediente(1, "ovo", "3", ""));
        livro.figuras.GravarFigura("a figura", 1);
        Lixeira(livro.banco, livro.figuras, relogio).Guardar({1});
        QCOMPARE(Pacotes(livro).size(), 1);
        QVERIFY2(Pacotes(livro)[0].startsWith("Pão de_ló "), qPrintable(Pacotes(livro)[0]));
        QVERIFY(Pacotes(livro)[0].endsWith(".lr$"));

        Livro outro;
        AvisosDeTeste avisos;
        ImportacaoDoPacote importacao(outro.banco, outro.figuras, avisos, relogio);
        QVERIFY(importacao.Carregar(livro.Caminho("Lixeira/" + Pacotes(livro)[0])));
        importacao.EfetuarImportacao(1);
        QCOMPARE(outro.Nomes(), {"Pão de/ló"});
        QCOMPARE(outro.Coluna("Ingredientes", "Ingrediente", "id_ingredientes"), {"ovo"});
        QCOMPARE(LerArquivo(outro.Caminho("Fotos/F0000001.img")), "a figura");
    }

    void milReceitasDaoUmPacote()
    {
        Livro livro;
        RelogioParado relogio;
        QList<qint64> numeros;
        for (int i = 1; i <= 1000; ++i)
            numeros += i;
        for (int i = 1; i <= 20; ++i)
            livro.banco.ExecutarSQL(
                QString("Insert into Receitas(Nome,Modo) values ('Bolo %1','Asse')").arg(i));
        Lixeira(livro.banco, livro.figuras, relogio)
            .Guardar(numeros); // those that are gone by now do no harm
        QCOMPARE(Pacotes(livro).size(), 1);
        QVERIFY2(Pacotes(livro)[0].startsWith("Bolo 1 e mais 19 "), qPrintable(Pacotes(livro)[0]));
    }

    void umRascunhoSemNomeESemLinhasTambemFica()
    {
        Livro livro;
        RelogioParado relogio;
        ReceitaNaTela rascunho;
        rascunho.txtModo = "bata tudo e";
        const Lixeira lixeira(livro.banco, livro.figuras, relogio);
        lixeira.Guardar(rascunho);
        lixeira.Guardar(rascunho); // within the same second
        QCOMPARE(Pacotes(livro).size(), 2);
        QVERIFY(Pacotes(livro)[0].startsWith("Sem nome "));
    }

    void soOsUltimosFicam()
    {
        Livro livro;
        RelogioParado relogio;
        const Lixeira lixeira(livro.banco, livro.figuras, relogio);
        QVERIFY(QDir().mkpath(livro.Caminho("Lixeira")));
        for (int i = 0; i < Lixeira::kMaisPacotes; ++i) {
            const QString nome = livro.Caminho(QString("Lixeira/antigo %1.lr$").arg(i));
            QVERIFY(GravarArquivo(nome, "x"));
            const utimbuf quando = {1000 + i, 1000 + i};
            QCOMPARE(utime(QFile::encodeName(nome).constData(), &quando), 0);
        }
        QVERIFY(GravarArquivo(livro.Caminho("Lixeira/notas.txt"), "do usuário"));
        ReceitaNaTela rascunho;
        rascunho.txtNome = "novo";
        lixeira.Guardar(rascunho);
        QStringList pacotes = Pacotes(livro);
        QVERIFY(pacotes.removeOne("notas.txt"));
        QCOMPARE(pacotes.size(), Lixeira::kMaisPacotes);
        QVERIFY(!pacotes.contains("antigo 0.lr$"));
        QVERIFY(pacotes.contains("antigo 1.lr$"));
    }

    void semEspacoNadaSeDizENadaFica()
    {
        Livro livro;
        RelogioParado relogio;
        livro.banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Bolo','" +
                                QString("Asse").repeated(9000) + "')");
        {
            const LimiteDeArquivo limite(500);
            Lixeira(livro.banco, livro.figuras, relogio).Guardar({1});
        }
        QCOMPARE(Pacotes(livro), QStringList());
    }

    void aoLadoDeUmLivroPrivadoOPacoteEPrivado()
    {
        Livro livro;
        RelogioParado relogio;
        livro.banco.ExecutarSQL("Insert into Receitas(Nome,Modo) values ('Bolo','Asse')");
        QCOMPARE(chmod(QFile::encodeName(livro.banco.CaminhoDoLivro()).constData(), 0600), 0);
        Lixeira(livro.banco, livro.figuras, relogio).Guardar({1});
        struct stat dados = {};
        QCOMPARE(stat(QFile::encodeName(livro.Caminho("Lixeira/" + Pacotes(livro)[0])).constData(), &dados),
                 0);
        QCOMPARE(dados.st_mode & 0777, mode_t(0600));
    }

    void umLinkNoLugarDaPastaNaoESeguido()
    {
        Livro livro;
        QTemporaryDir alheia;
        RelogioParado relogio;
        QVERIFY(QFile::link(alheia.path(), livro.Caminho("Lixeira")));
        ReceitaNaTela rascunho;
        rascunho.txtNome = "novo";
        Lixeira(livro.banco, livro.figuras, relogio).Guardar(rascunho);
        QVERIFY(QDir(alheia.path()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TesteLixeira)
#include "teste_lixeira.moc"
