#include "store/EscolhasDoLivro.h"

#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/ErroBanco.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sqlite3.h>

using namespace Comandos;

class TesteEscolhas : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pasta = std::make_unique<QTemporaryDir>();
        m_banco = std::make_unique<Banco>(m_pasta->path());
        m_banco->LerUmaVez();
    }

    void achaOPrimeiroQueComeca_data()
    {
        QTest::addColumn<QString>("prefixo");
        QTest::addColumn<QString>("achado");
        QTest::newRow("sem olhar maiúsculas") << "ma"
                                              << "Massas";
        QTest::newRow("o primeiro da lista") << "MASSA"
                                             << "Massas";
        QTest::newRow("o texto inteiro") << "massas finas"
                                         << "Massas Finas";
        QTest::newRow("mais que o texto inteiro") << "massas finas e" << QString();
        QTest::newRow("o acento distingue") << "pa"
                                            << "Panquecas";
        QTest::newRow("acento sem olhar maiúsculas") << "PÃ"
                                                     << "pães";
        QTest::newRow("no meio não vale") << "ssas" << QString();
        QTest::newRow("vazio não acha nada") << "" << QString();
        QTest::newRow("com hífen") << "couve-f"
                                   << "couve-flor";
        QTest::newRow("o hífen distingue") << "couvef" << QString();
        // Folding it would change the count of letters that are still missing.
        QTest::newRow("a dobra não muda o tamanho") << "STRASSE" << QString();
        QTest::newRow("letra sem maiúscula de um caractere") << "straß"
                                                             << "Straße";
        QTest::newRow("de outro alfabeto") << "ЖА"
                                           << "жареное";
    }

    void achaOPrimeiroQueComeca()
    {
        Inserir({"Massas", "Massas Finas", "pães", "Panquecas", "Straße", "couve-flor", "жареное", ""});
        EscolhasDoLivro escolhas(*m_banco, SqlNomesDeIngredientes(), {});
        QFETCH(QString, prefixo);
        const int achado = escolhas.Procurar(prefixo);
        QTEST(achado < 0 ? QString() : escolhas.Item(achado), "achado");
    }

    void achaComoAProcuraSimples()
    {
        QRandomGenerator acaso(20051121);
        QStringList itens;
        for (int i = 0; i < 400; ++i) {
            QString item;
            for (int n = acaso.bounded(1, 7); n > 0; --n)
                item += QStringView(u"abAB cÇçãÃ-").at(acaso.bounded(11));
            if (!item.trimmed().isEmpty())
                itens += item.trimmed();
        }
        Inserir(itens);
        EscolhasDoLivro escolhas(*m_banco, SqlNomesDeIngredientes(), {});
        for (int i = 0; i < 500; ++i) {
            const QString prefixo = itens[acaso.bounded(itens.size())].left(acaso.bounded(1, 7)).toUpper();
            int esperado = -1;
            for (int j = 0; j < escolhas.Quantos() && esperado < 0; ++j)
                if (escolhas.Item(j).startsWith(prefixo, Qt::CaseInsensitive))
                    esperado = j;
            QCOMPARE(escolhas.Procurar(prefixo), esperado);
        }
    }

    void sabeOQueJaTem()
    {
        Inserir({"Açúcar", "óleo", "sal", "Straße"});
        EscolhasDoLivro escolhas(*m_banco, SqlNomesDeIngredientes(), {});
        for (const char *valor : {"AÇÚCAR", "Óleo", "Sal", "STRASSE"})
            QVERIFY2(escolhas.Contem(valor), valor);
        for (const char *valor : {"acucar", "sa", "sal ", ""})
            QVERIFY2(!escolhas.Contem(valor), valor);
    }

    void leOsMuitosPorTrasEQuemPerguntaEspera()
    {
        Muitos();
        EscolhasDoLivro escolhas(*m_banco, SqlNomesDeIngredientes(), {});
        if (escolhas.Completa())
            QSKIP("this machine reads them all at once");
        QCOMPARE(escolhas.Quantos(), kMuitos);
        QVERIFY(escolhas.Completa());

        m_banco->ExecutarSQL(SqlExcluirIngredientes(1)); // what was kept holds no longer
        EscolhasDoLivro outras(*m_banco, SqlNomesDeIngredientes(), {});
        QTRY_VERIFY(outras.Completa());
        QCOMPARE(outras.Item(0), "ingrediente 000001");
    }

    void guardaAsDeUmLivroQueNaoMudou()
    {
        Muitos();
        QCOMPARE(EscolhasDoLivro(*m_banco, SqlNomesDeIngredientes(), {}).Quantos(), kMuitos);
        QVERIFY(EscolhasDoLivro(*m_banco, SqlNomesDeIngredientes(), {}).Completa());
    }

    void quemDesisteNaoSeguraOLivro()
    {
        Muitos();
        m_banco->DefinirEspera(200);
        EscolhasDoLivro escolhas(*m_banco, SqlNomesDeIngredientes(), {});
        m_banco->ExecutarSQL(SqlExcluirIngredientes(1));
        QCOMPARE(escolhas.Quantos(), kMuitos);
    }

private:
    static constexpr int kMuitos = 60000;

    /// As another tool would, all at once.
    void Inserir(const QStringList &ingredientes, int receita = 1)
    {
        QStringList linhas;
        for (const QString &ingrediente : ingredientes)
            linhas += QString("(%1,'%2')").arg(receita).arg(ingrediente);
        sqlite3 *conexao = nullptr;
        sqlite3_open(m_banco->CaminhoDoLivro().toUtf8().constData(), &conexao);
        char *erro = nullptr;
        const QString sql = "INSERT INTO Ingredientes(id_receitas,Ingrediente) VALUES" + linhas.join(",");
        if (sqlite3_exec(conexao, sql.toUtf8().constData(), nullptr, nullptr, &erro) != SQLITE_OK)
            qFatal("%s", erro);
        sqlite3_close(conexao);
    }
    void Muitos()
    {
        QStringList ingredientes;
        for (int i = 0; i < kMuitos; ++i)
            ingredientes += QString("ingrediente %1").arg(i, 6, 10, QLatin1Char('0'));
        Inserir(ingredientes.mid(0, 1), 1);
        Inserir(ingredientes.mid(1), 2);
    }

    std::unique_ptr<QTemporaryDir> m_pasta;
    std::unique_ptr<Banco> m_banco;
};

QTEST_GUILESS_MAIN(TesteEscolhas)
#include "teste_escolhas.moc"
