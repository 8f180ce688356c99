// A cook's days with the real, unmodified program: what she enters by mouse and keyboard is there after a
// restart, in the list, on the card and in the editor.
#include "Programa.h"

#include "editor/LinhaIngrediente.h"
#include "exemplos/LeitorExemplos.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"

#include <QTest>

namespace
{
const QString kExemplos = QStringLiteral(PASTA_EXEMPLOS);

/// The keys and clicks that enter a recipe. Apostrophes cannot be typed, so a name that has one is pasted.
QString Cadastrar(const ReceitaExemplo &receita)
{
    QStringList r;
    r << "clique imgDetRcta"
      << "espere altura picDetReceita 6540"
      << "espere visivel txtNome";
    r << (receita.nome.contains('\'') ? "cole txtNome " : "digite txtNome ") + Palavra(receita.nome);
    r << "digite cmbTipo " + Palavra(receita.tipo) << "tecla Delete";
    r << "cole txtModo " + Palavra(receita.modo);
    if (!receita.observacao.isEmpty())
        r << "cole txtObs " + Palavra(receita.observacao);
    if (receita.porcoes)
        r << "digite txtPorcoes " + QString::number(receita.porcoes);
    r << "digite txtPreparo " + Palavra(receita.preparo);
    if (receita.tipoCalorias)
        r << (receita.tipoCalorias == 'P' ? "clique optPorcao" : "clique optReceita");
    if (receita.calorias)
        r << "digite txtCalorias " + QString::number(receita.calorias);
    for (const IngredienteExemplo &linha : receita.ingredientes) {
        // Delete takes away a tail that the completion may have added.
        r << "digite txtQtde " + Palavra(linha.quantidade);
        r << "digite cmbMedida " + Palavra(linha.unidade) << "tecla Delete";
        r << "digite cmbIngrediente " + Palavra(linha.ingrediente) << "tecla Delete";
        r << "clique cmdSalvarIngredientes";
    }
    if (!receita.figura.isEmpty())
        r << "clique optImagem"
          << "clique cmdSalvarFig"
          << "arquivo " + Palavra(kExemplos + "/figuras/" + receita.figura) << "espere visivel cmdLimparFig";
    r << "clique cmdSalvarRct"
      << "espere oculto picDetReceita"
      << "espere altura picLstReceitas 6540";
    return r.join('\n') + '\n';
}

/// The checks that find it again: its row, its card, its fields.
QString Reencontrar(const ReceitaExemplo &receita)
{
    const QString nome = Palavra(receita.nome);
    const int calorias = receita.tipoCalorias == 'P' ? receita.calorias * receita.porcoes : receita.calorias;
    QStringList r;
    r << "espere celula lstVwReceitas " + nome + " 1 " + Palavra(receita.tipo);
    r << "confira celula lstVwReceitas " + nome + " 3 " + Palavra(receita.preparo);
    r << "confira celula lstVwReceitas " + nome + " 4 " + Palavra(QString::number(calorias));
    r << "duplo-clique-linha lstVwReceitas " + nome << "espere visivel picView";
    r << "clique imgLstRcta"
      << "espere visivel lstVwReceitas";
    r << "menu-linha lstVwReceitas " + nome << "escolha \"Alterar Receita\""
      << "espere visivel txtNome";
    r << "confira texto txtNome " + nome << "confira texto cmbTipo " + Palavra(receita.tipo);
    r << "confira texto txtModo " + Palavra(receita.modo)
      << "confira texto txtObs " + Palavra(receita.observacao);
    r << "confira linhas-abaixo TrVwIngredientes " + QString::number(receita.ingredientes.size());
    r << "clique lblFechar"
      << "clique imgLstRcta"
      << "espere visivel lstVwReceitas";
    return r.join('\n') + '\n';
}

/// Starts the program without waiting for its end, playing the script of that file.
void IniciarAoLado(QProcess &processo, const Programa &programa, const QString &roteiro)
{
    programa.Preparar(processo);
    QProcessEnvironment ambiente = processo.processEnvironment();
    ambiente.insert("QT_QPA_GENERIC_PLUGINS", "roteiro:" + roteiro);
    ambiente.insert("QT_PLUGIN_PATH", CAMINHO_PLUGIN);
    processo.setProcessEnvironment(ambiente);
    processo.start(programa.Pasta("cozinhario"), QStringList());
}
} // namespace

class TestePontaAPonta : public QObject
{
    Q_OBJECT
private slots:
    void aJanelaCabeEmTelasPequenas_data();
    void aJanelaCabeEmTelasPequenas();
    void receitasCadastradasSaoReencontradasDepoisDeReiniciar()
    {
        Programa programa;
        QList<ReceitaExemplo> receitas;
        for (const char *arquivo : {"pao-dagua", "feijoada-completa", "brigadeiro"})
            receitas += LeitorExemplos::Ler(kExemplos + "/receitas/" + arquivo + ".txt");

        QString entrada = "espere altura picLstReceitas 6540\n";
        for (const ReceitaExemplo &receita : std::as_const(receitas))
            entrada += Cadastrar(receita);
        entrada += "espere linhas lstVwReceitas 3\nclique imgSaida\n";
        QVERIFY2(programa.Tocar(entrada) == 0, qPrintable(programa.Erro()));

        // What was typed is in the book, to the character.
        const Banco banco(programa.Pasta());
        for (const ReceitaExemplo &receita : std::as_const(receitas)) {
            const RecordSet rs = banco.AbrirRecordset(Comandos::SqlReceitaDeNome(receita.nome.toUpper()));
            QStringList nomes; // what the book holds instead
            for (RecordSet todas = banco.AbrirRecordset(Comandos::SqlLista()); !todas.Eof(); todas.MoveNext())
                nomes += todas.Texto(u"Nome");
            QVERIFY2(rs.RecordCount() == 1, qPrintable(receita.nome + ": " + nomes.join('|')));
            QCOMPARE(rs.Texto(u"Nome"), receita.nome);
            QCOMPARE(rs.Texto(u"Modo"), receita.modo);
            QCOMPARE(rs.Texto(u"Observacao"), receita.observacao);
            RecordSet linhas =
                banco.AbrirRecordset(Comandos::SqlIngredientes(rs.Valor(u"id_receitas").toLongLong()));
            QCOMPARE(linhas.RecordCount(), int(receita.ingredientes.size()));
            for (const IngredienteExemplo &linha : receita.ingredientes) {
                QCOMPARE(linhas.Texto(u"Quantidade"), linha.quantidade);
                QCOMPARE(linhas.Texto(u"Unidade"), linha.unidade);
                QCOMPARE(linhas.Texto(u"Ingrediente"), linha.ingrediente);
                linhas.MoveNext();
            }
        }

        QString volta = "espere linhas lstVwReceitas 3\nespere altura picLstReceitas 6540\n";
        for (const ReceitaExemplo &receita : std::as_const(receitas))
            volta += Reencontrar(receita);
        volta += "clique imgSaida\n";
        QVERIFY2(programa.Tocar(volta) == 0, qPrintable(programa.Erro()));
    }

    void oLivroDosExemplosAbreInteiro()
    {
        Programa programa;
        QCOMPARE(QProcess::execute(CAMINHO_ENCHER, {programa.Pasta(), kExemplos}), 0);
        const int quantas = LeitorExemplos::LerPasta(kExemplos + "/receitas").size();
        QVERIFY(quantas >= 40);
        QVERIFY2(
            programa.Tocar(
                QString(
                    "espere linhas lstVwReceitas %1\nclique imgPesRcta\n"
                    "espere altura picPesReceita 3780\ndigite txtPesNome \"bolo\"\n"
                    "clique cmdPesquisa\nconfira celula lstVwReceitas \"Bolo de cenoura com chocolate\" 1 "
                    "Bolos\nclique imgSaida\n")
                    .arg(quantas)) == 0,
            qPrintable(programa.Erro()));
    }

    void umPacoteNaLinhaDeComandoEImportadoAntesDaJanela()
    {
        Programa origem, destino;
        QCOMPARE(QProcess::execute(CAMINHO_ENCHER, {origem.Pasta(), kExemplos}), 0);
        const int quantas = LeitorExemplos::LerPasta(kExemplos + "/receitas").size();
        QVERIFY2(
            origem.Tocar(QString("espere linhas lstVwReceitas %1\nclique-linha lstVwReceitas Brigadeiro\n"
                                 "tecla Ctrl+A\nclique imgTransmit\nespere oculto picMsg\nclique imgSaida\n")
                             .arg(quantas)) == 0,
            qPrintable(origem.Erro()));
        const QString pacote = destino.Pasta("com espaço e ç.lr$");
        QVERIFY(QFile::copy(origem.Pasta("PacoteReceita.lr$"), pacote));
        QVERIFY2(
            destino.Tocar(
                QString("espere linhas lstImportacao %1\nresponda Importar\n"
                        "espere mensagem \"Importação de Pacote do Cozinhario 2005 Realizada com Sucesso!\"\n"
                        "responda OK\nespere linhas lstVwReceitas %1\nclique imgSaida\n")
                    .arg(quantas),
                {'"' + pacote + '"'}) == 0,
            qPrintable(destino.Erro()));
    }

    // Old users' backups hold an Access file: the book is converted as soon as it is back.
    void umBackupAntigoRestauradoAbreConvertido()
    {
        Programa programa;
        QFile livro(QStringLiteral(PASTA_LIVROS_ANTIGOS) + "/v2000_exportado/dadosr.lst");
        QVERIFY(livro.open(QIODevice::ReadOnly));
        const QByteArray bytes = livro.readAll();
        const QByteArray arquivo = QByteArray("dadosr.lst").leftJustified(200, ' ') +
                                   QByteArray::number(bytes.size()).rightJustified(9, '0') + bytes;
        QByteArray recipiente;
        QCOMPARE(Recipiente::Compactar(arquivo, recipiente), Recipiente::kSucesso);
        QFile backup(programa.Pasta("Antigo.bck"));
        QVERIFY(backup.open(QIODevice::WriteOnly));
        QCOMPARE(backup.write(recipiente), recipiente.size());
        backup.close();
        QVERIFY2(programa.Tocar(
                     "espere linhas lstVwReceitas 0\nespere altura picLstReceitas 6540\n"
                     "clique imgRestore\narquivo " +
                     Palavra(backup.fileName()) +
                     "\nespere mensagem \"Você Confirma Restauração da Cópia de Segurança?\"\nresponda Sim\n"
                     "espere mensagem \"Restauração da Cópia de Segurança Realizada com Sucesso!\"\n"
                     "responda OK\nespere visivel caixaMensagem\nresponda OK\nespere oculto caixaMensagem\n"
                     "clique imgLstRcta\nespere linhas lstVwReceitas 25\nclique imgSaida\n") == 0,
                 qPrintable(programa.Erro()));
        QVERIFY(QFile::exists(programa.Pasta("dadosr-access-original.lst")));
    }

    void umaSegundaCopiaImportaEAvisaAPrimeira()
    {
        Programa origem, programa;
        QCOMPARE(QProcess::execute(CAMINHO_ENCHER, {origem.Pasta(), kExemplos}), 0);
        const int quantas = LeitorExemplos::LerPasta(kExemplos + "/receitas").size();
        QVERIFY2(
            origem.Tocar(QString("espere linhas lstVwReceitas %1\nclique-linha lstVwReceitas Brigadeiro\n"
                                 "clique imgTransmit\nespere oculto picMsg\nclique imgSaida\n")
                             .arg(quantas)) == 0,
            qPrintable(origem.Erro()));
        // The first copy waits for the second one's import to show up in its list.
        QFile roteiro(programa.Pasta("primeira.roteiro"));
        QVERIFY(roteiro.open(QIODevice::WriteOnly));
        roteiro.write("espere linhas lstVwReceitas 0\nespere altura picLstReceitas 6540\nguarde " +
                      Palavra(programa.Pasta("pronta")).toUtf8() +
                      " lblTitulo\nespere linhas lstVwReceitas 1\nclique imgSaida\n");
        roteiro.close();
        QProcess primeira;
        IniciarAoLado(primeira, programa, roteiro.fileName());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(programa.Pasta("pronta")), 30'000);

        QVERIFY2(programa.Tocar(
                     "espere linhas lstImportacao 1\nresponda Importar\nespere mensagem "
                     "\"Importação de Pacote do Cozinhario 2005 Realizada com Sucesso!\"\nresponda OK\n",
                     {origem.Pasta("PacoteReceita.lr$")}) == 0,
                 qPrintable(programa.Erro()));
        QVERIFY(primeira.waitForFinished(40'000));
        QCOMPARE(primeira.exitCode(), 0);
    }

    // Started once more, with no package: the running copy shows what the book holds by now.
    void iniciarDeNovoRecarregaAListaDaPrimeiraCopia()
    {
        Programa programa;
        const int quantas = LeitorExemplos::LerPasta(kExemplos + "/receitas").size();
        QFile roteiro(programa.Pasta("primeira.roteiro"));
        QVERIFY(roteiro.open(QIODevice::WriteOnly));
        roteiro.write(QString("espere linhas lstVwReceitas 0\nespere altura picLstReceitas 6540\nguarde %1 "
                              "lblTitulo\nespere linhas lstVwReceitas %2\nclique imgSaida\n")
                          .arg(Palavra(programa.Pasta("pronta")))
                          .arg(quantas)
                          .toUtf8());
        roteiro.close();
        QProcess primeira;
        IniciarAoLado(primeira, programa, roteiro.fileName());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(programa.Pasta("pronta")), 30'000);

        QCOMPARE(QProcess::execute(CAMINHO_ENCHER, {programa.Pasta(), kExemplos}), 0);
        QProcess segunda;
        programa.Preparar(segunda);
        segunda.start(programa.Pasta("cozinhario"), QStringList());
        QVERIFY(segunda.waitForFinished(40'000));
        QCOMPARE(segunda.exitCode(), 0);
        QVERIFY(primeira.waitForFinished(40'000));
        QCOMPARE(primeira.exitCode(), 0);
    }
};

void TestePontaAPonta::aJanelaCabeEmTelasPequenas_data()
{
    QTest::addColumn<QSize>("tela");
    QTest::addColumn<double>("escala");
    for (const QSize tela : {QSize(1024, 600), QSize(1366, 768), QSize(1920, 1080)}) {
        for (const double escala : {1.0, 1.5, 2.0})
            QTest::addRow("%d x %d a %g", tela.width(), tela.height(), escala) << tela << escala;
    }
}

void TestePontaAPonta::aJanelaCabeEmTelasPequenas()
{
    QFETCH(QSize, tela);
    QFETCH(double, escala);
    Programa programa;
    programa.DefinirTela(tela, escala);
    const QString roteiro = "espere altura picLstReceitas 6540\n"
                            "confira inteiro frmPrincipal\n"
                            "confira inteiro lblUrl\n"
                            "clique imgDetRcta\n"
                            "espere altura picDetReceita 6540\n"
                            "digite txtNome \"Pão\"\n"
                            "confira inteiro cmdSalvarRct\n"
                            "clique imgSaida\n";
    QVERIFY2(programa.Tocar(roteiro) == 0, qPrintable(programa.Erro()));
}

QTEST_GUILESS_MAIN(TestePontaAPonta)
#include "teste_ponta_a_ponta.moc"
