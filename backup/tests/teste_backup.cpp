#include "backup/ArquivoBackup.h"
#include "backup/RestauracaoDoLivro.h"
#include "backup/tests/Duplos.h"
#include "base/EventosPendentes.h"
#include "base/Operacao.h"
#include "base/Ponteiro.h"
#include "packages/Recipiente.h"
#include "store/ErroBanco.h"
#include "store/TravaDoLivro.h"

#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <sqlite3.h>

using ArquivoBackup::Cabecalho;
using ArquivoBackup::Entrada;

namespace
{
const QString kSucessoBackup = "Cópia de Segurança Realizada com Sucesso!";
const QString kSucessoRestauracao = "Restauração da Cópia de Segurança Realizada com Sucesso!";
const QString kIndisponivel = "Unidade/Diretório Indisponível no Momento!";
const QString kInvalido = "Arquivo de Cópia de Segurança Inválida!";
const QString kNaoLocalizado = "Arquivo de Cópia de Segurança Não Localizado!";
const QString kPergunta = "Você Confirma Restauração da Cópia de Segurança?";

void Gravar(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}

QByteArray EntradaCompleta(const QString &nome, const QByteArray &dados)
{
    return Cabecalho(nome, dados.size()) + dados;
}

void GravarBackup(const QString &caminho, const QByteArray &arquivo)
{
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(arquivo, recipiente), Recipiente::kSucesso);
    Gravar(caminho, recipiente);
}

/// The archive in a backup file.
QByteArray Arquivo(const QString &caminho)
{
    QByteArray arquivo;
    return Recipiente::Descompactar(Conteudo(caminho), arquivo) == Recipiente::kSucesso
               ? arquivo.chopped(1)
               : QByteArray("(broken)");
}

/// The names of a backup's entries.
QStringList NomesDasEntradas(const QString &caminho)
{
    QByteArray bytes = Arquivo(caminho) + '\0';
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QList<Entrada> entradas;
    if (!ArquivoBackup::Ler(buffer, entradas))
        return {"(broken)"};
    QStringList nomes;
    for (const Entrada &entrada : entradas)
        nomes << entrada.nome;
    return nomes;
}

/// Leaves the book as a power cut in the middle of a change would: half written, with the journal that undoes
/// it.
void InterromperUmaMudanca(const QString &livro)
{
    sqlite3 *conexao = nullptr;
    QCOMPARE(sqlite3_open(livro.toUtf8().constData(), &conexao), SQLITE_OK);
    // A cache of one page writes the change out before it is committed.
    QCOMPARE(sqlite3_exec(conexao,
                          "PRAGMA cache_size=1; BEGIN IMMEDIATE;"
                          "CREATE TABLE metade(x); INSERT INTO metade "
                          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
                          "SELECT randomblob(900) FROM n;",
                          nullptr, nullptr, nullptr),
             SQLITE_OK);
    const QByteArray meio = Conteudo(livro);
    const QByteArray diario = Conteudo(livro + "-journal");
    QCOMPARE(sqlite3_exec(conexao, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    QCOMPARE(sqlite3_close(conexao), SQLITE_OK);
    QVERIFY(meio != Conteudo(livro));
    Gravar(livro, meio);
    Gravar(livro + "-journal", diario);
}
} // namespace

class TesteBackup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void oDialogoDeSalvarPedeOCombinado();
    void oDialogoDeAbrirPedeOCombinado();
    void semNomeNadaAcontece_data();
    void semNomeNadaAcontece();

    void semFigurasOMaximoEDoisEHaUmaEntrada();
    void umPassoPorFigura();
    void asEntradasSaoOLivroEAsFigurasDistintas();
    void figuraQueFaltaOuVaziaNaoTemEntrada();
    void nomeDe200OuMaisVaiCortado_data();
    void nomeDe200OuMaisVaiCortado();
    void substituiOArquivoExistenteSemPerguntar();
    void aPastaBackupComArquivosDoUsuarioFica();
    void destinoIndisponivelEDitoEOAnteriorFica();
    void oLivroNaoESobrescritoPelaPropriaCopia();
    void mudancaPelaMetadeEDesfeitaAntesDaCopia();
    void livroIlegivelNaoDeixaRastro();
    void aJanelaViveEOCliqueRepetidoNaoEntra();

    void restauraOQueFoiSalvo();
    void aSequenciaDaRestauracao();
    void arquivoQueNaoExisteTemSuaMensagem();
    void arquivoInvalidoNaoMudaNada_data();
    void arquivoInvalidoNaoMudaNada();
    void livroComPartesDeOutroERecusadoAntesDaPergunta_data();
    void livroComPartesDeOutroERecusadoAntesDaPergunta();
    void respostaNaoNaoMudaNada();
    void figuraMenorGuardaACaudaDaAntiga();
    void livroMenorGuardaACaudaDoAntigo();
    void oMesmoNomeDuasVezesSobrescreveASiMesmo();
    void figuraAchaAAntigaEmOutraCaixa();
    void diarioDeixadoNaoSeMisturaAoRestaurado();
    void livroAntigoVoltaByteAByte();
    void semLivroNaoHaCopiaGuardada();
    void ficamAsTresUltimasCopiasDoLivro();
    void relogioAtrasadoNaoApagaACopiaNova();
    void livroQueNaoELivroEDitoComACopia();
    void livroSemTabelasEDitoComACopia();
    void bancoOcupadoNaoDaCopiaRasgada();
    void outraCopiaImportandoFazEsperarOuDizer();
    void oDiarioDeUmLivroComLinkESabido();
    void restauracaoTardiaGuardaOQueFoiSalvo();
    void restauracaoTardiaSemMudancaNaoDizNada();
    void aBarraSegueOsBytes();
    void nomeDe250BytesServe();
    void sobrasDeUmBackupMortoSomem();
    void linkNoLugarDoTrabalhoNaoESeguido();
    void figuraQueNaoSePodeTrocarParaARestauracao();
    void aPastaRestoreComArquivosDoUsuarioFica();
    void arquivosDeUmaRestauracaoAnteriorSaoIgnorados();

    void restauracaoDecididaTerminaNoInicioSeguinte();
    void restauracaoNaoDecididaSomeNoInicioSeguinte();

    void encerrarOProgramaParaOBackup(); // the last one: the program stays ended

private:
    QString Caminho(const QString &nome) const { return m_pasta->filePath(nome); }
    /// A restore of that file, cut off right after it was decided.
    void DecidirERestar(const QString &backup);

    std::unique_ptr<QTemporaryDir> m_pasta; ///< around the application folder
    std::unique_ptr<Cozinha> m_cozinha;
};

void TesteBackup::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_pasta->path()).mkdir("livro"));
    m_cozinha = std::make_unique<Cozinha>(Caminho("livro"));
}

void TesteBackup::cleanup()
{
    QVERIFY(!Ponteiro::EmEspera());
    QVERIFY(!m_cozinha->painel.visivel);
    m_cozinha.reset();
    m_pasta.reset();
}

void TesteBackup::oDialogoDeSalvarPedeOCombinado()
{
    m_cozinha->backup.imgBackup_Click();
    QCOMPARE(m_cozinha->seletor.salvar.size(), 1);
    const PedidoArquivo pedido = m_cozinha->seletor.salvar[0];
    QCOMPARE(pedido.titulo, "Salvar Arquivo de Backup do Cozinhario 2005");
    QCOMPARE(pedido.filtro, "Arquivos de Backups|*.bck");
    QCOMPARE(pedido.nome, "BackupCozinhario.bck");
    QCOMPARE(pedido.pastaInicial, Caminho("livro"));
}

void TesteBackup::oDialogoDeAbrirPedeOCombinado()
{
    m_cozinha->backup.imgRestore_Click();
    QCOMPARE(m_cozinha->seletor.abrir.size(), 1);
    const PedidoArquivo pedido = m_cozinha->seletor.abrir[0];
    QCOMPARE(pedido.titulo, "Selecione o Arquivo de Backup do Cozinhario 2005");
    QCOMPARE(pedido.filtro, "Arquivos de Backups|*.bck");
    QCOMPARE(pedido.nome, "");
    QCOMPARE(pedido.pastaInicial, Caminho("livro"));
    QVERIFY(!pedido.exigirExistente);
    QCOMPARE(m_cozinha->telas.botoesRestaurados, 1);
}

void TesteBackup::semNomeNadaAcontece_data()
{
    QTest::addColumn<QString>("escolha");
    QTest::newRow("cancelado") << "";
    QTest::newRow("nome sem pasta") << "BackupCozinhario.bck";
}

void TesteBackup::semNomeNadaAcontece()
{
    QFETCH(QString, escolha);
    m_cozinha->Backup(escolha);
    m_cozinha->Restaurar(escolha);
    QVERIFY(m_cozinha->avisos.textos.isEmpty());
    QVERIFY(m_cozinha->painel.passos.isEmpty());
    QVERIFY(Retrato(m_pasta->path()).keys() == QStringList{"livro"});
}

void TesteBackup::semFigurasOMaximoEDoisEHaUmaEntrada()
{
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(m_cozinha->painel.passos,
             QStringList({"Realizando Backup do Sistema... 0/100", "1", "/2", "2", "fim"}));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
    QCOMPARE(m_cozinha->avisos.icones, {Avisos::Icone::Nenhum});
    const QByteArray livro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    QCOMPARE(Arquivo(Caminho("a.bck")), EntradaCompleta("dadosr.lst", livro));
    QVERIFY(Retrato(Caminho("livro")).keys() == QStringList{"dadosr.lst"});
}

void TesteBackup::umPassoPorFigura()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    m_cozinha->NovaReceita("Pão", "figura dois");
    m_cozinha->NovaReceita("Sopa", "figura três");
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(m_cozinha->painel.passos,
             QStringList({"Realizando Backup do Sistema... 0/100", "1", "/4", "2", "3", "4", "4", "fim"}));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
}

void TesteBackup::asEntradasSaoOLivroEAsFigurasDistintas()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    m_cozinha->NovaReceita("Pão", "figura dois");
    m_cozinha->NovaReceita("Cópia do bolo");
    m_cozinha->banco.ExecutarSQL("Update Receitas set Figura = 'F0000001.img' Where id_receitas = 3");
    m_cozinha->NovaReceita("Sem figura");
    m_cozinha->banco.ExecutarSQL("Update Receitas set Figura = '' Where id_receitas = 4");
    m_cozinha->Backup(Caminho("a.bck"));
    const QByteArray livro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    QVERIFY(Arquivo(Caminho("a.bck")) == EntradaCompleta("dadosr.lst", livro) +
                                             EntradaCompleta("F0000001.img", "figura um") +
                                             EntradaCompleta("F0000002.img", "figura dois"));
}

void TesteBackup::figuraQueFaltaOuVaziaNaoTemEntrada()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    m_cozinha->NovaReceita("Pão", "figura dois");
    m_cozinha->NovaReceita("Sopa", "figura três");
    QVERIFY(QFile::remove(m_cozinha->figuras.Caminho("F0000001.img")));
    Gravar(m_cozinha->figuras.Caminho("F0000002.img"), "");
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(NomesDasEntradas(Caminho("a.bck")), QStringList({"dadosr.lst", "F0000003.img"}));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
}

void TesteBackup::nomeDe200OuMaisVaiCortado_data()
{
    QTest::addColumn<int>("comprimento");
    QTest::addColumn<bool>("inteiroNoDisco");
    QTest::newRow("200") << 200 << true;
    QTest::newRow("201, inteiro no disco") << 201 << true;
    QTest::newRow("230, cortado no disco") << 230 << false;
}

void TesteBackup::nomeDe200OuMaisVaiCortado()
{
    QFETCH(int, comprimento);
    QFETCH(bool, inteiroNoDisco);
    const QString nome = QString(comprimento, 'f');
    const QString cortado = QString(200, 'f');
    m_cozinha->NovaReceita("Bolo", "figura");
    m_cozinha->banco.ExecutarSQL("Update Receitas set Figura = '" + nome + "'");
    QVERIFY(QFile::rename(m_cozinha->figuras.Caminho("F0000001.img"),
                          m_cozinha->figuras.Caminho(inteiroNoDisco ? nome : cortado)));
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(NomesDasEntradas(Caminho("a.bck")), QStringList({"dadosr.lst", cortado}));

    QVERIFY(QDir(m_cozinha->banco.Caminho("Fotos")).removeRecursively());
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(QDir(m_cozinha->banco.Caminho("Fotos")).entryList(QDir::Files), {cortado});
    QCOMPARE(Conteudo(m_cozinha->figuras.Caminho(cortado)), "figura");
}

void TesteBackup::substituiOArquivoExistenteSemPerguntar()
{
    m_cozinha->NovaReceita("Bolo");
    Gravar(Caminho("a.bck"), QByteArray("uma copia antiga e bem mais longa").repeated(1000));
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(NomesDasEntradas(Caminho("a.bck")), {"dadosr.lst"});
    QVERIFY(m_cozinha->avisos.perguntas.isEmpty());
    QVERIFY(Retrato(m_pasta->path()).keys() == QStringList({"a.bck", "livro", "livro/dadosr.lst"}));
}

void TesteBackup::aPastaBackupComArquivosDoUsuarioFica()
{
    m_cozinha->NovaReceita("Bolo");
    QVERIFY(QDir().mkdir(m_cozinha->banco.Caminho("Backup")));
    m_cozinha->Backup(m_cozinha->banco.Caminho("Backup\\meu.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
    QVERIFY(Retrato(Caminho("livro")).keys() == QStringList({"Backup", "Backup/meu.bck", "dadosr.lst"}));
}

void TesteBackup::destinoIndisponivelEDitoEOAnteriorFica()
{
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("nao existe/a.bck"));
    QVERIFY(QDir(m_pasta->path()).mkdir("pasta.bck"));
    m_cozinha->Backup(Caminho("pasta.bck"));
    QCOMPARE(m_cozinha->avisos.textos, QStringList({kIndisponivel, kIndisponivel}));
    QCOMPARE(m_cozinha->avisos.icones, QList({Avisos::Icone::Parada, Avisos::Icone::Parada}));
    QVERIFY(Retrato(m_pasta->path()).keys() == QStringList({"livro", "livro/dadosr.lst", "pasta.bck"}));
}

void TesteBackup::oLivroNaoESobrescritoPelaPropriaCopia()
{
    m_cozinha->NovaReceita("Bolo");
    const QByteArray livro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    m_cozinha->Backup(m_cozinha->banco.CaminhoDoLivro());
    QCOMPARE(m_cozinha->avisos.textos, {kIndisponivel});
    QVERIFY(Conteudo(m_cozinha->banco.CaminhoDoLivro()) == livro);
}

void TesteBackup::mudancaPelaMetadeEDesfeitaAntesDaCopia()
{
    m_cozinha->NovaReceita("Bolo");
    const QByteArray inteiro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    InterromperUmaMudanca(m_cozinha->banco.CaminhoDoLivro());
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
    QVERIFY(Arquivo(Caminho("a.bck")) == EntradaCompleta("dadosr.lst", inteiro));
    QVERIFY(!QFile::exists(m_cozinha->banco.CaminhoDoLivro() + "-journal"));
}

void TesteBackup::livroIlegivelNaoDeixaRastro()
{
    Gravar(m_cozinha->banco.CaminhoDoLivro(), "nenhum livro");
    const auto antes = Retrato(m_pasta->path());
    QVERIFY_EXCEPTION_THROWN(m_cozinha->Backup(Caminho("a.bck")), ErroBanco);
    QVERIFY(Retrato(m_pasta->path()) == antes);
    QVERIFY(!m_cozinha->painel.visivel);
    QCOMPARE(m_cozinha->painel.passos.last(), "fim");
    QVERIFY(m_cozinha->avisos.textos.isEmpty());
}

void TesteBackup::aJanelaViveEOCliqueRepetidoNaoEntra()
{
    m_cozinha->NovaReceita("Bolo", QByteArray(3'000'000, 'x'));
    int batidas = 0;
    QTimer relogio;
    connect(&relogio, &QTimer::timeout, this, [&] { ++batidas; });
    relogio.start(0);
    bool deNovo = false;
    m_cozinha->painel.aCadaValor = [&] {
        if (deNovo)
            return;
        deNovo = true;
        QVERIFY(!Operacao::Pedir(this, [this] { m_cozinha->backup.imgBackup_Click(); }));
        QVERIFY(!Operacao::Pedir(this, [this] { m_cozinha->backup.imgRestore_Click(); }));
    };
    m_cozinha->Backup(Caminho("a.bck"));
    QVERIFY(deNovo);
    QCOMPARE(m_cozinha->seletor.salvar.size(), 1);
    QCOMPARE(m_cozinha->seletor.abrir.size(), 0);
    QVERIFY2(batidas > 20, qPrintable(QString::number(batidas))); // a beat for each slice, at the least
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});

    batidas = 0;
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY2(batidas > 10, qPrintable(QString::number(batidas)));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
}

void TesteBackup::restauraOQueFoiSalvo()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    m_cozinha->NovaReceita("Pão d'água", QByteArray(700'000, 'p'));
    m_cozinha->Backup(Caminho("a.bck"));
    const auto salvo = Retrato(Caminho("livro"));

    // Into an empty folder: another machine.
    QVERIFY(QDir(m_pasta->path()).mkdir("outro"));
    Cozinha outra(Caminho("outro"));
    outra.Restaurar(Caminho("a.bck"));
    QCOMPARE(outra.avisos.textos, {kSucessoRestauracao});
    QVERIFY(Retrato(Caminho("outro")) == salvo);
    QCOMPARE(outra.Nomes(), QStringList({"Bolo", "Pão d'água"}));

    // Over a book that went on.
    m_cozinha->banco.ExecutarSQL("Delete from Receitas");
    m_cozinha->NovaReceita("Intrusa", "figura intrusa");
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->Nomes(), QStringList({"Bolo", "Pão d'água"}));
}

void TesteBackup::aSequenciaDaRestauracao()
{
    m_cozinha->NovaReceita("Bolo", QByteArray(40'000, 'b'));
    m_cozinha->NovaReceita("Pão", QByteArray(60'000, 'p'));
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->painel.passos.clear();
    m_cozinha->avisos.textos.clear();
    m_cozinha->avisos.icones.clear();
    const qint64 livro = QFileInfo(m_cozinha->banco.CaminhoDoLivro()).size();
    // One 0x00 more than the archive; one round of the scale, as the archive is shorter than 3 200 050 bytes.
    const auto total =
        static_cast<int>(std::nearbyint(static_cast<double>(3 * 209 + livro + 100'000 + 1) / 100));
    m_cozinha->Restaurar(Caminho("a.bck"));
    const double passo1 = static_cast<double>(livro) / 100;
    QCOMPARE(m_cozinha->painel.passos,
             QStringList({QString("Realizando Restauração do Sistema... 0/%1").arg(total),
                          QString::number(static_cast<int>(passo1)),
                          QString::number(static_cast<int>(passo1 + 400)),
                          QString::number(static_cast<int>(passo1 + 1000)), QString::number(total), "fim"}));
    QCOMPARE(m_cozinha->avisos.perguntas, {kPergunta});
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoRestauracao});
    QCOMPARE(m_cozinha->avisos.icones, {Avisos::Icone::Nenhum});
    QCOMPARE(m_cozinha->janela.chamadas, QStringList({"EsconderTelas", "LivroRestaurado"}));
    QVERIFY(!QFile::exists(m_cozinha->banco.Caminho("Restore")));
    QVERIFY(QFile::exists(m_cozinha->banco.Caminho("Fotos")));
}

void TesteBackup::arquivoQueNaoExisteTemSuaMensagem()
{
    m_cozinha->NovaReceita("Bolo");
    const auto antes = Retrato(m_pasta->path());
    m_cozinha->Restaurar(Caminho("digitado.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kNaoLocalizado});
    QCOMPARE(m_cozinha->avisos.icones, {Avisos::Icone::Parada});
    QVERIFY(m_cozinha->avisos.perguntas.isEmpty());
    QVERIFY(Retrato(m_pasta->path()) == antes);
}

void TesteBackup::livroComPartesDeOutroERecusadoAntesDaPergunta_data()
{
    QTest::addColumn<QByteArray>("sql");
    QTest::newRow("gatilho") << QByteArray("CREATE TRIGGER ladrao AFTER INSERT ON Receitas BEGIN DELETE FROM "
                                           "Receitas; END");
    QTest::newRow("visão") << QByteArray("CREATE VIEW v AS SELECT 1");
    QTest::newRow("banco de outro programa") << QByteArray("DROP TABLE Ingredientes");
}

void TesteBackup::livroComPartesDeOutroERecusadoAntesDaPergunta()
{
    QFETCH(QByteArray, sql);
    m_cozinha->NovaReceita("Bolo", "figura um");
    const QString livro = m_cozinha->banco.CaminhoDoLivro();
    const QByteArray bom = Conteudo(livro);
    sqlite3 *conexao = nullptr;
    QCOMPARE(sqlite3_open(livro.toUtf8().constData(), &conexao), SQLITE_OK);
    QCOMPARE(sqlite3_exec(conexao, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(conexao);
    const QByteArray mexido = Conteudo(livro);
    Gravar(livro, bom);
    GravarBackup(Caminho("a.bck"), EntradaCompleta("dadosr.lst", mexido));
    const auto antes = Retrato(m_pasta->path());
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(m_cozinha->avisos.textos.value(0).startsWith(kInvalido));
    QVERIFY(m_cozinha->avisos.perguntas.isEmpty());
    QVERIFY(Retrato(m_pasta->path()) == antes);
}

void TesteBackup::arquivoInvalidoNaoMudaNada_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("compactar");
    const QByteArray livro = EntradaCompleta("dadosr.lst", "outro livro");
    QTest::newRow("não é recipiente") << QByteArray("isto nao e um backup, mas e longo") << false;
    QTest::newRow("vazio") << QByteArray() << false;
    QTest::newRow("curto") << QByteArray("curto") << false;
    QByteArray cortado;
    QCOMPARE(Recipiente::Compactar(livro.repeated(50), cortado), Recipiente::kSucesso);
    QTest::newRow("fluxo cortado") << cortado.left(60) + cortado.right(17) << false;
    QTest::newRow("figura primeiro") << EntradaCompleta("F0000001.img", "x") + livro << true;
    QTest::newRow("comprimento sem número")
        << livro + EntradaCompleta("F0000001.img", "x").replace("000000001", "00000000?") << true;
    QTest::newRow("figura cortada") << livro + EntradaCompleta("F0000001.img", "figura").chopped(2) << true;
    QTest::newRow("para fora da pasta") << livro + EntradaCompleta("..\\..\\x.img", "figura") << true;
    QTest::newRow("para a pasta acima") << livro + EntradaCompleta("../dadosr.lst", "figura") << true;
    QTest::newRow("nome vazio") << livro + EntradaCompleta("", "figura") << true;
    QTest::newRow("nome com controle") << livro + EntradaCompleta("F\n.img", "figura") << true;
}

void TesteBackup::arquivoInvalidoNaoMudaNada()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, compactar);
    m_cozinha->NovaReceita("Bolo", "figura um");
    if (compactar)
        GravarBackup(Caminho("a.bck"), bytes);
    else
        Gravar(Caminho("a.bck"), bytes);
    const auto antes = Retrato(m_pasta->path());
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kInvalido});
    QCOMPARE(m_cozinha->avisos.icones, {Avisos::Icone::Parada});
    QVERIFY(m_cozinha->avisos.perguntas.isEmpty());
    QVERIFY(m_cozinha->painel.passos.isEmpty());
    QVERIFY(m_cozinha->janela.chamadas.isEmpty());
    QVERIFY(Retrato(m_pasta->path()) == antes);
}

void TesteBackup::respostaNaoNaoMudaNada()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->NovaReceita("Pão");
    m_cozinha->painel.passos.clear();
    m_cozinha->avisos.textos.clear();
    m_cozinha->avisos.resposta = false;
    const auto antes = Retrato(m_pasta->path());
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.perguntas, {kPergunta});
    QVERIFY(m_cozinha->avisos.textos.isEmpty());
    QVERIFY(m_cozinha->painel.passos.isEmpty());
    QVERIFY(m_cozinha->janela.chamadas.isEmpty());
    QVERIFY(Retrato(m_pasta->path()) == antes);
}

void TesteBackup::figuraMenorGuardaACaudaDaAntiga()
{
    m_cozinha->NovaReceita("Bolo", "curta");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->figuras.GravarFigura("uma figura comprida", 1);
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(Conteudo(m_cozinha->figuras.Caminho("F0000001.img")), "curtaigura comprida");
}

void TesteBackup::livroMenorGuardaACaudaDoAntigo()
{
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    const QByteArray menor = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    m_cozinha->NovaReceita(QString("Pão").repeated(50'000));
    const QByteArray maior = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    QVERIFY(maior.size() > menor.size());
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(Conteudo(m_cozinha->banco.CaminhoDoLivro()) == menor + maior.mid(menor.size()));
    QCOMPARE(m_cozinha->Nomes(), {"Bolo"});
    m_cozinha->NovaReceita("Sopa"); // and it can be written again
    QCOMPARE(m_cozinha->Nomes(), QStringList({"Bolo", "Sopa"}));
}

void TesteBackup::oMesmoNomeDuasVezesSobrescreveASiMesmo()
{
    m_cozinha->NovaReceita("Bolo", "a figura antiga de todas");
    const QByteArray livro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    GravarBackup(Caminho("a.bck"), EntradaCompleta("dadosr.lst", livro) +
                                       EntradaCompleta("F0000001.img", "PRIMEIRA VEZ") +
                                       EntradaCompleta("f0000001.IMG", "segunda"));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoRestauracao});
    QCOMPARE(Conteudo(m_cozinha->figuras.Caminho("F0000001.img")), "segundaA VEZiga de todas");
    QCOMPARE(QDir(m_cozinha->banco.Caminho("Fotos")).entryList(QDir::Files), {"F0000001.img"});
}

void TesteBackup::figuraAchaAAntigaEmOutraCaixa()
{
    m_cozinha->NovaReceita("Bolo", "figura nova");
    m_cozinha->Backup(Caminho("a.bck"));
    const QString pasta = m_cozinha->banco.Caminho("Fotos\\");
    QVERIFY(QFile::rename(pasta + "F0000001.img", pasta + "f0000001.IMG"));
    Gravar(pasta + "f0000001.IMG", "antiga");
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(QDir(pasta).entryList(QDir::Files), {"f0000001.IMG"});
    QCOMPARE(Conteudo(pasta + "f0000001.IMG"), "figura nova");
}

void TesteBackup::diarioDeixadoNaoSeMisturaAoRestaurado()
{
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->NovaReceita("Pão");
    InterromperUmaMudanca(m_cozinha->banco.CaminhoDoLivro());
    QVERIFY(QFile::exists(m_cozinha->banco.CaminhoDoLivro() + "-journal"));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
    QVERIFY(!QFile::exists(m_cozinha->banco.CaminhoDoLivro() + "-journal"));
    QCOMPARE(m_cozinha->Nomes(), {"Bolo"});

    // The same where the present file is no book at all and nothing can be rolled back into it.
    const QByteArray restaurado = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    InterromperUmaMudanca(m_cozinha->banco.CaminhoDoLivro());
    Gravar(m_cozinha->banco.CaminhoDoLivro(), "nenhum livro");
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(!QFile::exists(m_cozinha->banco.CaminhoDoLivro() + "-journal"));
    QVERIFY(restaurado.startsWith(Conteudo(m_cozinha->banco.CaminhoDoLivro())));
    QCOMPARE(m_cozinha->Nomes(), {"Bolo"});
}

/// A backup of an old book brings a database of another kind; its bytes come back as they are.
void TesteBackup::livroAntigoVoltaByteAByte()
{
    QByteArray antigo("\0\1\0\0Standard Jet DB\0", 20);
    antigo += QByteArray(368'620, '\x5A');
    const QByteArray jpeg = QByteArray("\xFF\xD8\xFF\xE0") + QByteArray(3604, 'j');
    const QByteArray gif = QByteArray("GIF89a") + QByteArray(672, 'g');
    GravarBackup(Caminho("antigo.bck"), EntradaCompleta("dadosr.lst", antigo) +
                                            EntradaCompleta("F0000003.img", jpeg) +
                                            EntradaCompleta("F0000008.img", gif));
    m_cozinha->Restaurar(Caminho("antigo.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoRestauracao});
    QVERIFY(Conteudo(m_cozinha->banco.CaminhoDoLivro()) == antigo);
    QVERIFY(Conteudo(m_cozinha->figuras.Caminho("F0000003.img")) == jpeg);
    QVERIFY(Conteudo(m_cozinha->figuras.Caminho("F0000008.img")) == gif);
}

void TesteBackup::semLivroNaoHaCopiaGuardada()
{
    GravarBackup(Caminho("a.bck"), EntradaCompleta("dadosr.lst", "livro"));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(Retrato(Caminho("livro")).keys() == QStringList({"Fotos", "dadosr.lst"}));
    QCOMPARE(Conteudo(m_cozinha->banco.CaminhoDoLivro()), "livro");
}

void TesteBackup::ficamAsTresUltimasCopiasDoLivro()
{
    const QDir pasta(Caminho("livro"));
    Gravar(pasta.filePath("dadosr-original-antigo.lst"), "de outro");
    QList<QByteArray> livros;
    for (int i = 0; i < 5; ++i) {
        const QByteArray livro = "livro " + QByteArray::number(i);
        livros << livro;
        GravarBackup(Caminho("a.bck"), EntradaCompleta("dadosr.lst", livro));
        m_cozinha->Restaurar(Caminho("a.bck"));
        QCOMPARE(Conteudo(pasta.filePath("dadosr.lst")), livro);
        if (i == 2) // later restores on another day
            m_cozinha->relogio.agora = QDateTime(QDate(2005, 12, 1), QTime(0, 0, 0));
    }
    // Book 0 was copied by the second restore, book 3 by the fifth; the first two share a second.
    QCOMPARE(pasta.entryList({"dadosr-*"}, QDir::Files, QDir::Name),
             QStringList({"dadosr-20051121-102031.lst", "dadosr-20051201-000000.lst",
                          "dadosr-20051201-000001.lst", "dadosr-original-antigo.lst"}));
    QCOMPARE(Conteudo(pasta.filePath("dadosr-20051121-102031.lst")), livros[1]);
    QCOMPARE(Conteudo(pasta.filePath("dadosr-20051201-000000.lst")), livros[2]);
    QCOMPARE(Conteudo(pasta.filePath("dadosr-20051201-000001.lst")), livros[3]);
}

void TesteBackup::DecidirERestar(const QString &backup)
{
    Gravar(Caminho("arquivo"), Arquivo(backup) + '\0');
    QFile arquivo(Caminho("arquivo"));
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    QList<Entrada> entradas;
    QVERIFY(ArquivoBackup::Ler(arquivo, entradas));
    RestauracaoDoLivro restauracao(m_cozinha->banco, m_cozinha->figuras);
    QCOMPARE(restauracao.Preparar(
                 arquivo, entradas, [](const Entrada &) {}, [] { return true; }),
             Fim::Feito);
    const std::optional<QString> copia = restauracao.GuardarLivroAtual(m_cozinha->relogio.agora);
    QVERIFY(copia && restauracao.Decidir(*copia));
}

void TesteBackup::relogioAtrasadoNaoApagaACopiaNova()
{
    const QDir pasta(Caminho("livro"));
    for (const char *nome : {"dadosr-20051121-102031.lst", "dadosr-20051121-102032.lst", "dadosr-20051121-102033.lst"})
        Gravar(pasta.filePath(nome), nome);
    m_cozinha->relogio.agora = QDateTime(QDate(1985, 11, 21), QTime(8, 0, 0));
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    const auto copias = [&] { return pasta.entryList({"dadosr-*"}, QDir::Files, QDir::Name); };
    for (const QString &nome : {QString("dadosr-19851121-080000.lst"), QString("dadosr-19851121-080001.lst"),
                                QString("dadosr-19851121-080002.lst"), QString("dadosr-19851121-080003.lst")}) {
        const QByteArray livro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
        m_cozinha->Restaurar(Caminho("a.bck"));
        QVERIFY(Conteudo(pasta.filePath(nome)) == livro);
        QCOMPARE(copias().size(), 3);
    }
    QCOMPARE(copias(), QStringList({"dadosr-19851121-080001.lst", "dadosr-19851121-080002.lst",
                                    "dadosr-19851121-080003.lst"}));
}

void TesteBackup::livroQueNaoELivroEDitoComACopia()
{
    m_cozinha->NovaReceita("Bolo");
    const QByteArray antes = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    GravarBackup(Caminho("a.bck"), EntradaCompleta("dadosr.lst", QByteArray(100'000, 'x')));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.size(), 2);
    QCOMPARE(m_cozinha->avisos.textos[0], kSucessoRestauracao);
    QCOMPARE(m_cozinha->avisos.icones[1], Avisos::Icone::Parada);
    const QString copia = Caminho("livro/dadosr-20051121-102030.lst");
    QVERIFY(m_cozinha->avisos.textos[1].contains(copia));
    QVERIFY(!m_cozinha->avisos.textos[1].contains("não foi alterado"));
    QVERIFY(Conteudo(copia) == antes);
    QVERIFY(!Ponteiro::EmEspera());

    // As the message says: the earlier book is back.
    QVERIFY(QFile::rename(m_cozinha->banco.CaminhoDoLivro(), Caminho("livro/outro")));
    QVERIFY(QFile::rename(copia, m_cozinha->banco.CaminhoDoLivro()));
    QCOMPARE(m_cozinha->Nomes(), QStringList("Bolo"));
}

void TesteBackup::livroSemTabelasEDitoComACopia()
{
    m_cozinha->NovaReceita("Bolo");
    const QString outro = Caminho("outro.db");
    sqlite3 *conexao = nullptr;
    QCOMPARE(sqlite3_open(outro.toUtf8().constData(), &conexao), SQLITE_OK);
    QCOMPARE(sqlite3_exec(conexao, "CREATE TABLE Discos(x)", nullptr, nullptr, nullptr), SQLITE_OK);
    QCOMPARE(sqlite3_close(conexao), SQLITE_OK);
    GravarBackup(Caminho("a.bck"), EntradaCompleta("dadosr.lst", Conteudo(outro)));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(m_cozinha->avisos.textos.last().contains(Caminho("livro/dadosr-20051121-102030.lst")) ||
            m_cozinha->Nomes() == QStringList("Bolo")); // or it is refused before anything is replaced
}

void TesteBackup::bancoOcupadoNaoDaCopiaRasgada()
{
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->banco.DefinirEspera(50);
    sqlite3 *conexao = nullptr;
    QCOMPARE(sqlite3_open(m_cozinha->banco.CaminhoDoLivro().toUtf8().constData(), &conexao), SQLITE_OK);
    QCOMPARE(sqlite3_exec(conexao, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    const auto antes = Retrato(Caminho("livro"));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(m_cozinha->avisos.textos.last().endsWith("\r\nNenhum Arquivo foi Alterado."));
    sqlite3_exec(conexao, "ROLLBACK", nullptr, nullptr, nullptr);
    QCOMPARE(sqlite3_close(conexao), SQLITE_OK);
    auto depois = Retrato(Caminho("livro"));
    depois.remove("Fotos");
    QVERIFY(depois.keys() == QStringList("dadosr.lst"));
    QVERIFY(depois["dadosr.lst"] == antes["dadosr.lst"]);
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
}

void TesteBackup::outraCopiaImportandoFazEsperarOuDizer()
{
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    TravaDoLivro outra(m_cozinha->banco); // what a copy that imports holds
    QVERIFY(outra.Pegar([] { return false; }));

    // It ends while we wait, and the window lives meanwhile.
    int batidas = 0;
    QTimer relogio;
    connect(&relogio, &QTimer::timeout, this, [&] {
        if (++batidas == 5)
            outra.Soltar();
    });
    relogio.start(10);
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
    QVERIFY(batidas >= 5);

    QVERIFY(outra.Pegar([] { return false; }));
    QVERIFY(!TravaDoLivro(m_cozinha->banco).Pegar([] { return false; }));
    outra.Soltar();
    QVERIFY(TravaDoLivro(m_cozinha->banco).Pegar([] { return false; }));
    QCOMPARE(QDir(Caminho("livro")).entryList({"*.lck*", "*trava*"}, QDir::Files | QDir::Hidden), QStringList());
}

void TesteBackup::oDiarioDeUmLivroComLinkESabido()
{
    QVERIFY(QDir(m_pasta->path()).mkdir("longe"));
    m_cozinha->NovaReceita("Bolo");
    m_cozinha->Backup(Caminho("a.bck"));
    const QString livro = m_cozinha->banco.CaminhoDoLivro();
    const QString real = Caminho("longe/livro.lst");
    QVERIFY(QFile::rename(livro, real));
    QVERIFY(QFile::link(real, livro));
    m_cozinha->NovaReceita("Pão");
    InterromperUmaMudanca(real);
    QVERIFY(QFile::exists(real + "-journal"));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
    QVERIFY(!QFile::exists(real + "-journal"));
    QVERIFY(QFileInfo(livro).isSymLink());
    QCOMPARE(m_cozinha->Nomes(), QStringList("Bolo"));
}

void TesteBackup::restauracaoTardiaGuardaOQueFoiSalvo()
{
    m_cozinha->NovaReceita("Bolo", "figura");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->NovaReceita("Pão");
    DecidirERestar(Caminho("a.bck"));
    m_cozinha->NovaReceita("Salva depois");
    const QByteArray livro = Conteudo(m_cozinha->banco.CaminhoDoLivro());
    m_cozinha->relogio.agora = QDateTime(QDate(2005, 11, 22), QTime(9, 0, 0));
    m_cozinha->avisos.textos.clear();
    m_cozinha->backup.ConcluirRestauracao();
    const QString copia = Caminho("livro/dadosr-20051122-090000.lst");
    QVERIFY(Conteudo(copia) == livro);
    QCOMPARE(m_cozinha->Nomes(), QStringList("Bolo"));
    QCOMPARE(m_cozinha->avisos.textos.size(), 1);
    QVERIFY(m_cozinha->avisos.textos[0].contains(copia));
    QVERIFY(!QFile::exists(Caminho("livro/Restore")));
}

void TesteBackup::restauracaoTardiaSemMudancaNaoDizNada()
{
    m_cozinha->NovaReceita("Bolo", "figura");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->NovaReceita("Pão");
    DecidirERestar(Caminho("a.bck"));
    m_cozinha->avisos.textos.clear();
    m_cozinha->backup.ConcluirRestauracao();
    QCOMPARE(m_cozinha->Nomes(), QStringList("Bolo"));
    QVERIFY(m_cozinha->avisos.textos.isEmpty());
    QCOMPARE(QDir(Caminho("livro")).entryList({"dadosr-*"}, QDir::Files).size(), 1);
}

void TesteBackup::aBarraSegueOsBytes()
{
    // One large picture and nine small ones: the bar must not be full when the large one is still to come.
    for (int i = 1; i <= 9; ++i)
        m_cozinha->NovaReceita("Pequena " + QString::number(i), "figura");
    m_cozinha->NovaReceita("Grande", QByteArray(20'000'000, 'g'));
    QList<int> valores;
    int batidas = 0;
    QTimer batida;
    connect(&batida, &QTimer::timeout, this, [&] {
        ++batidas;
        valores << m_cozinha->painel.passos.last().toInt();
    });
    batida.start(0);
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(m_cozinha->painel.passos.first(), "Realizando Backup do Sistema... 0/100");
    QStringList esperado = {"1", "/11"};
    for (int i = 2; i <= 11; ++i)
        esperado << QString::number(i);
    esperado << "11" << "fim";
    QCOMPARE(m_cozinha->painel.passos.mid(1), esperado);
    // Beats come once a slice, so their places are the bytes': half of them before the middle of the bar.
    const auto antes = std::count_if(valores.begin(), valores.end(), [](int valor) { return valor <= 6; });
    QVERIFY2(antes > batidas / 4 && antes < batidas * 3 / 4, qPrintable(QString("%1 of %2").arg(antes).arg(batidas)));
}

void TesteBackup::nomeDe250BytesServe()
{
    m_cozinha->NovaReceita("Bolo");
    const QString destino = Caminho(QString(246, 'n') + ".bck");
    m_cozinha->Backup(destino);
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
    QVERIFY(QFile::exists(destino));
}

void TesteBackup::sobrasDeUmBackupMortoSomem()
{
    m_cozinha->NovaReceita("Bolo");
    QVERIFY(QDir(m_pasta->path()).mkdir("pendrive"));
    Gravar(Caminho("pendrive/~a.bck.tmp"), "of a backup that was killed");
    Gravar(Caminho("pendrive/~minhas notas.tmp"), "somebody's");
    m_cozinha->Backup(Caminho("pendrive/a.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
    QCOMPARE(QDir(Caminho("pendrive")).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             QStringList({"a.bck", "~minhas notas.tmp"}));
}

void TesteBackup::linkNoLugarDoTrabalhoNaoESeguido()
{
    m_cozinha->NovaReceita("Bolo");
    Gravar(Caminho("alheio"), "de outro");
    QVERIFY(QDir(Caminho("livro")).mkdir("Backup"));
    QVERIFY(QFile::link(Caminho("alheio"), Caminho("livro/Backup/~temp.bck")));
    m_cozinha->Backup(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos, {kSucessoBackup});
    QCOMPARE(Conteudo(Caminho("alheio")), "de outro");

    QVERIFY(QDir(Caminho("livro")).mkdir("Restore"));
    QVERIFY(QDir(m_pasta->path()).mkdir("pasta alheia"));
    Gravar(Caminho("pasta alheia/nota"), "de outro");
    QVERIFY(QFile::link(Caminho("alheio"), Caminho("livro/Restore/~temp.rst")));
    QVERIFY(QFile::link(Caminho("pasta alheia"), Caminho("livro/Restore/~preparo")));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
    QCOMPARE(Conteudo(Caminho("alheio")), "de outro");
    QCOMPARE(Conteudo(Caminho("pasta alheia/nota")), "de outro");

    QVERIFY(QFile::link(Caminho("pasta alheia"), Caminho("livro/Backup")));
    m_cozinha->Backup(Caminho("b.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoBackup); // its work file is elsewhere then
    QCOMPARE(QDir(Caminho("pasta alheia")).entryList(QDir::Files | QDir::Hidden), QStringList("nota"));
}

void TesteBackup::figuraQueNaoSePodeTrocarParaARestauracao()
{
    for (int i = 1; i <= 3; ++i)
        m_cozinha->NovaReceita(QString("Receita %1").arg(i), "nova " + QByteArray::number(i));
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->avisos.textos.clear();
    for (int i = 1; i <= 3; ++i)
        m_cozinha->figuras.GravarFigura("velha" + QByteArray::number(i), i);
    const QString figura2 = m_cozinha->figuras.Caminho("F0000002.img");
    QVERIFY(QFile::remove(figura2));
    QVERIFY(QDir().mkdir(figura2)); // a folder stands in the way
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(
        m_cozinha->avisos.textos,
        {"Impossível Restaurar o Arquivo F0000002.img!\r\nOs Arquivos Seguintes não foram Restaurados."});
    QCOMPARE(m_cozinha->avisos.icones.last(), Avisos::Icone::Parada);
    QCOMPARE(Conteudo(m_cozinha->figuras.Caminho("F0000001.img")), "nova 1");
    QCOMPARE(Conteudo(m_cozinha->figuras.Caminho("F0000003.img")), "velha3");
    QVERIFY(!QFile::exists(m_cozinha->banco.Caminho("Restore")));
    QCOMPARE(m_cozinha->janela.chamadas, {"LivroRestaurado"});
}

void TesteBackup::aPastaRestoreComArquivosDoUsuarioFica()
{
    m_cozinha->NovaReceita("Bolo");
    QVERIFY(QDir().mkdir(m_cozinha->banco.Caminho("Restore")));
    m_cozinha->Backup(m_cozinha->banco.Caminho("Restore\\meu.bck"));
    m_cozinha->Restaurar(m_cozinha->banco.Caminho("Restore\\meu.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
    QCOMPARE(QDir(m_cozinha->banco.Caminho("Restore")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             {"meu.bck"});
}

void TesteBackup::arquivosDeUmaRestauracaoAnteriorSaoIgnorados()
{
    m_cozinha->NovaReceita("Bolo", "figura");
    m_cozinha->Backup(Caminho("a.bck"));
    QVERIFY(QDir().mkpath(m_cozinha->banco.Caminho("Restore\\~preparo\\Fotos")));
    Gravar(m_cozinha->banco.Caminho("Restore\\~temp.rst"), QByteArray(100'000, 'v'));
    Gravar(m_cozinha->banco.Caminho("Restore\\~preparo\\Fotos\\F0000001.img"), "velha e comprida");
    m_cozinha->Restaurar(Caminho("a.bck"));
    QCOMPARE(m_cozinha->avisos.textos.last(), kSucessoRestauracao);
    QCOMPARE(Conteudo(m_cozinha->figuras.Caminho("F0000001.img")), "figura");
    QVERIFY(!QFile::exists(m_cozinha->banco.Caminho("Restore")));
}

void TesteBackup::restauracaoDecididaTerminaNoInicioSeguinte()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    m_cozinha->NovaReceita("Pão", "figura dois");
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->avisos.textos.clear();
    m_cozinha->banco.ExecutarSQL("Delete from Receitas");
    m_cozinha->figuras.GravarFigura("outra um ", 1);
    m_cozinha->figuras.GravarFigura("outra dois ", 2);

    QByteArray bytes = Arquivo(Caminho("a.bck")) + '\0';
    Gravar(Caminho("arquivo"), bytes);
    QFile arquivo(Caminho("arquivo"));
    QVERIFY(arquivo.open(QIODevice::ReadOnly));
    QList<Entrada> entradas;
    QVERIFY(ArquivoBackup::Ler(arquivo, entradas));
    RestauracaoDoLivro restauracao(m_cozinha->banco, m_cozinha->figuras);
    QCOMPARE(restauracao.Preparar(
                 arquivo, entradas, [](const Entrada &) {}, [] { return true; }),
             Fim::Feito);
    QVERIFY(restauracao.Decidir(""));
    QVERIFY(restauracao.Pendente());
    // Cut off here, with the first file moved already.
    const QString pronto = m_cozinha->banco.Caminho("Restore\\~pronto\\");
    QVERIFY(QFile::remove(m_cozinha->banco.CaminhoDoLivro()));
    QVERIFY(QFile::rename(pronto + "dadosr.lst", m_cozinha->banco.CaminhoDoLivro()));

    Cozinha depois(Caminho("livro"));
    depois.backup.ConcluirRestauracao();
    QVERIFY(depois.avisos.textos.isEmpty());
    QCOMPARE(depois.Nomes(), QStringList({"Bolo", "Pão"}));
    QCOMPARE(Conteudo(depois.figuras.Caminho("F0000001.img")), "figura um");
    QCOMPARE(Conteudo(depois.figuras.Caminho("F0000002.img")), "figura dois");
    QVERIFY(Retrato(Caminho("livro")).keys() ==
            QStringList({"Fotos", "Fotos/F0000001.img", "Fotos/F0000002.img", "dadosr.lst"}));
}

void TesteBackup::restauracaoNaoDecididaSomeNoInicioSeguinte()
{
    m_cozinha->NovaReceita("Bolo", "figura um");
    const auto antes = Retrato(Caminho("livro"));
    QVERIFY(QDir().mkpath(m_cozinha->banco.Caminho("Restore\\~preparo\\Fotos")));
    QVERIFY(QDir().mkpath(m_cozinha->banco.Caminho("Backup")));
    Gravar(m_cozinha->banco.Caminho("Restore\\~temp.rst"), "metade");
    Gravar(m_cozinha->banco.Caminho("Restore\\~preparo\\dadosr.lst"), "outro livro");
    Gravar(m_cozinha->banco.Caminho("Backup\\~temp.bck"), "metade");
    m_cozinha->backup.ConcluirRestauracao();
    QVERIFY(Retrato(Caminho("livro")) == antes);
    QVERIFY(m_cozinha->avisos.textos.isEmpty());
}

void TesteBackup::encerrarOProgramaParaOBackup()
{
    m_cozinha->NovaReceita("Bolo", QByteArray(3'000'000, 'x'));
    m_cozinha->Backup(Caminho("a.bck"));
    const auto antes = Retrato(m_pasta->path());
    m_cozinha->avisos.textos.clear();
    EncerrarPrograma();
    m_cozinha->Backup(Caminho("a.bck"));
    m_cozinha->Restaurar(Caminho("a.bck"));
    QVERIFY(m_cozinha->avisos.textos.isEmpty());
    QVERIFY(Retrato(m_pasta->path()) == antes);
}

QTEST_GUILESS_MAIN(TesteBackup)
#include "teste_backup.moc"
