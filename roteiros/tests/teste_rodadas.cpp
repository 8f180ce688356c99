// Copies of the program that work on one book at the same time: some import, one restores, makes a backup or
// deletes. After every round the book is whole: each recipe has its own lines and its own picture, none is
// lost and none is half. The program runs itself again as the copies.
#include "backup/JanelaDoBackup.h"
#include "backup/modBackup.h"
#include "base/Avisos.h"
#include "base/PainelMensagem.h"
#include "base/Relogio.h"
#include "base/SeletorArquivos.h"
#include "base/Telas.h"
#include "packages/ImportacaoDoPacote.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <vector>

namespace
{
constexpr int kReceitas = 8; ///< of a package
constexpr int kLinhas = 4;
/// How many rounds; the variable asks for more than the few of every test run.
const int kRodadas = std::max(3, qEnvironmentVariableIntValue("COZINHARIO_RODADAS"));

QByteArray FiguraDe(const QString &nome)
{
    return nome.toLatin1().repeated(3000);
}

class AvisosCalados : public Avisos
{
public:
    void Avisar(const QString &texto, Icone) override { ditos << texto; }
    bool Perguntar(const QString &) override { return true; }
    QStringList ditos;
};

class SeletorPronto : public SeletorArquivos
{
public:
    QString EscolherParaAbrir(const PedidoArquivo &) override { return escolha; }
    QString EscolherParaSalvar(const PedidoArquivo &) override { return escolha; }
    QString escolha;
};

class PainelMudo : public PainelMensagem
{
public:
    void Mostrar(const QString &, int) override {}
    void DefinirMaximo(int) override {}
    void DefinirValor(int) override {}
    void Esconder() override {}
};

class TelasMudas : public Telas
{
public:
    void AbrirTela(const QString &) override {}
    void FecharTela() override {}
    QString TelaAtual() const override { return "Listagem"; }
    void RestaurarBotoes() override {}
    int AlturaDeTrabalho() const override { return 6540; }
};

class JanelaMuda : public JanelaDoBackup
{
public:
    void EsconderTelas() override {}
    void LivroRestaurado() override {}
};

struct Copia {
    explicit Copia(const QString &pasta)
        : banco(pasta)
        , figuras(banco)
    {
    }
    Banco banco;
    Figuras figuras;
    AvisosCalados avisos;
    SeletorPronto seletor;
    PainelMudo painel;
    TelasMudas telas;
    RelogioDoSistema relogio;
    JanelaMuda janela;
    modBackup backup{banco, figuras, avisos, seletor, painel, telas, relogio, janela};
};

/// Does one copy's work; what it tells the user goes to the standard output.
int Trabalhar(const QStringList &argumentos)
{
    Copia copia(argumentos[2]);
    const QString arquivo = argumentos.value(3);
    copia.seletor.escolha = arquivo;
    if (argumentos[1] == "--importar") {
        ImportacaoDoPacote importacao(copia.banco, copia.figuras, copia.avisos, copia.relogio);
        if (importacao.Carregar(arquivo) &&
            importacao.Importar([](int) { return true; }, [](int) {}) == ImportacaoDoPacote::Fim::Concluida)
            importacao.Concluir();
    } else if (argumentos[1] == "--restaurar") {
        copia.backup.imgRestore_Click();
    } else if (argumentos[1] == "--backup") {
        copia.backup.imgBackup_Click();
    } else {
        qint64 numero = 0; // the oldest: the others are still arriving
        for (RecordSet rs = copia.banco.AbrirRecordset(Comandos::SqlLista()); !rs.Eof(); rs.MoveNext())
            if (const qint64 este = rs.Valor(u"id_receitas").toLongLong(); numero == 0 || este < numero)
                numero = este;
        copia.figuras.ApagarFigura(numero);
        copia.banco.ExecutarSQL(Comandos::SqlExcluirIngredientes(numero));
        copia.banco.ExecutarSQL(Comandos::SqlExcluirReceita(numero));
        copia.avisos.ditos << "Excluída";
    }
    puts(copia.avisos.ditos.join("|").toUtf8().constData());
    return 0;
}

void GravarPacote(const QString &caminho, const QString &marca)
{
    QByteArray texto = Pacote::EscreverCabecalho();
    for (int i = 0; i < kReceitas; ++i) {
        Pacote::Receita receita;
        receita.Nome = marca + " " + QString::number(i);
        receita.Modo = "Asse.";
        receita.Figura = "x.img";
        receita.DadosFigura = FiguraDe(receita.Nome);
        for (int k = 0; k < kLinhas; ++k)
            receita.Ingredientes.append({receita.Nome, QString::number(k), "g"});
        texto += Pacote::EscreverReceita(receita);
    }
    QByteArray recipiente;
    QCOMPARE(Recipiente::Compactar(texto, recipiente), Recipiente::kSucesso);
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(recipiente), recipiente.size());
}

/// The recipes' names; "ERRO ..." first when one has not what belongs to it.
QStringList NomesDeUmLivroInteiro(const QString &pasta)
{
    const Copia copia(pasta);
    QStringList nomes;
    for (RecordSet rs = copia.banco.AbrirRecordset(Comandos::SqlLista()); !rs.Eof(); rs.MoveNext()) {
        const qint64 numero = rs.Valor(u"id_receitas").toLongLong();
        const QString nome = rs.Texto(u"Nome");
        nomes << nome;
        RecordSet linhas = copia.banco.AbrirRecordset(Comandos::SqlIngredientes(numero));
        if (linhas.RecordCount() != kLinhas)
            return {QString("ERRO %1: %2 linhas").arg(nome).arg(linhas.RecordCount())};
        for (int k = 0; !linhas.Eof(); linhas.MoveNext(), ++k)
            if (linhas.Texto(u"Ingrediente") != nome || linhas.Texto(u"Quantidade") != QString::number(k))
                return {"ERRO " + nome + ": linha de " + linhas.Texto(u"Ingrediente")};
        QFile figura(copia.figuras.Caminho(rs.Texto(u"Figura")));
        if (!figura.open(QIODevice::ReadOnly) || !figura.readAll().startsWith(FiguraDe(nome)))
            return {"ERRO " + nome + ": figura"};
    }
    nomes.sort();
    return nomes;
}

QStringList Marcadas(const QString &marca)
{
    QStringList nomes;
    for (int i = 0; i < kReceitas; ++i)
        nomes << marca + " " + QString::number(i);
    return nomes;
}
} // namespace

class TesteRodadas : public QObject
{
    Q_OBJECT

private slots:
    void importacaoContraOsOutros_data();
    void importacaoContraOsOutros();
};

void TesteRodadas::importacaoContraOsOutros_data()
{
    QTest::addColumn<int>("copias");
    QTest::newRow("duas cópias") << 2;
    QTest::newRow("cinco cópias") << 5;
}

void TesteRodadas::importacaoContraOsOutros()
{
    QFETCH(int, copias);
    QTemporaryDir fora;
    const QString livro = fora.filePath("livro");
    const QString backup = fora.filePath("a.bck");
    QVERIFY(QDir().mkpath(livro));
    GravarPacote(fora.filePath("base.lr$"), "Base");
    QCOMPARE(Trabalhar({"", "--importar", livro, fora.filePath("base.lr$")}), 0);
    QCOMPARE(Trabalhar({"", "--backup", livro, backup}), 0);
    QCOMPARE(NomesDeUmLivroInteiro(livro), Marcadas("Base"));

    const QStringList trabalhos = {"--restaurar", "--backup", "--apagar"};
    for (int rodada = 0; rodada < kRodadas; ++rodada) {
        const QString trabalho = trabalhos[rodada % trabalhos.size()];
        QStringList antes = NomesDeUmLivroInteiro(livro);
        const QString novo = fora.filePath("novo.bck");
        QFile::remove(novo);
        std::vector<std::unique_ptr<QProcess>> filhos;
        const auto comecar = [&](const QStringList &argumentos) {
            filhos.push_back(std::make_unique<QProcess>());
            filhos.back()->start(QCoreApplication::applicationFilePath(), argumentos);
        };
        QStringList novas;
        for (int i = 1; i < copias; ++i) {
            const QString marca = QString("R%1C%2").arg(rodada).arg(i);
            GravarPacote(fora.filePath(marca + ".lr$"), marca);
            novas += Marcadas(marca);
            comecar({"--importar", livro, fora.filePath(marca + ".lr$")});
            if (i == copias / 2)
                comecar({trabalho, livro, trabalho == "--restaurar" ? backup : novo});
        }
        QStringList ditos;
        for (const auto &filho : filhos) {
            QVERIFY(filho->waitForFinished(120'000));
            QCOMPARE(filho->exitCode(), 0);
            ditos << QString::fromUtf8(filho->readAllStandardOutput()).trimmed();
        }
        const QString dito = ditos.join("\n");
        QVERIFY2(!dito.contains("Falhas") && !dito.contains("Incompleta"), qPrintable(dito));

        const QStringList depois = NomesDeUmLivroInteiro(livro);
        QVERIFY2(!depois.value(0).startsWith("ERRO"), qPrintable(depois.value(0)));
        for (const QString &nome : depois)
            QVERIFY2(antes.contains(nome) || novas.contains(nome) || nome.startsWith("Base "), qPrintable(nome));
        if (trabalho == "--restaurar") {
            // The base, and whole packages of those that came after it.
            QVERIFY(dito.contains("Restauração da Cópia de Segurança Realizada com Sucesso!"));
            for (const QString &nome : Marcadas("Base"))
                QVERIFY2(depois.contains(nome), qPrintable(nome));
            QCOMPARE(depois.size() % kReceitas, 0);
        } else {
            for (const QString &nome : novas)
                QVERIFY2(depois.contains(nome), qPrintable(nome));
            QCOMPARE(depois.size(), antes.size() + novas.size() - (trabalho == "--apagar" ? 1 : 0));
        }
        if (trabalho == "--backup") {
            // What was copied is a whole book as well.
            const QString outro = fora.filePath("outro");
            QVERIFY(QDir().mkpath(outro));
            QCOMPARE(Trabalhar({"", "--restaurar", outro, novo}), 0);
            const QStringList copiadas = NomesDeUmLivroInteiro(outro);
            QVERIFY2(!copiadas.value(0).startsWith("ERRO") && copiadas.size() >= antes.size(),
                     qPrintable(copiadas.value(0)));
            QVERIFY(QDir(outro).removeRecursively());
        }
    }
    qInfo("%d rounds of %d copies", kRodadas, copias);
}

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    if (app.arguments().size() > 2 && app.arguments()[1].startsWith("--"))
        return Trabalhar(app.arguments());
    TesteRodadas teste;
    return QTest::qExec(&teste, argc, argv);
}

#include "teste_rodadas.moc"
