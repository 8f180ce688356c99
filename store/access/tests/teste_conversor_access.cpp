// The conversion of an old book: through the book's own operations, and through crashes and full disks. The
// program runs itself again as the child that is killed.
#include "base/ArquivoSeguro.h"
#include "store/Banco.h"
#include "store/ErroBanco.h"
#include "store/access/ConversorAccess.h"
#include "store/access/NovoLivro.h"
#include "store/access/TrancaDeArquivo.h"
#include "store/access/TrocaDeArquivo.h"
#include "store/access/tests/Esperado.h"
#include "store/access/tests/LivroFeito.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <csignal>
#include <functional>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
const QString kAmostras = QString(PASTA_FONTES) + "/tests/data/";
const QString kLista = "Select * from Receitas Order By id_receitas";
constexpr const char *kFilho = "--converter";

void Gravar(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}

/// An application folder whose book is these bytes.
class Cozinha
{
public:
    explicit Cozinha(const QByteArray &livro)
        : Cozinha()
    {
        Gravar(banco.CaminhoDoLivro(), livro);
    }

    QString Caminho(const QString &nome) const { return m_pasta.filePath(nome); }
    QString Pasta() const { return m_pasta.path(); }
    QByteArray Livro() const { return BytesDoArquivo(banco.CaminhoDoLivro()); }
    QStringList Arquivos() const
    {
        return QDir(m_pasta.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }
    /// The message of the error that an opening ends with; empty when it does not.
    QString ErroAoAbrir() const
    {
        try {
            banco.AbrirRecordset(kLista);
            return {};
        } catch (const ErroBanco &erro) {
            return erro.Mensagem();
        }
    }

private:
    QTemporaryDir m_pasta;

    Cozinha()
        : banco(m_pasta.path())
    {
        banco.DefinirConversor(ConversorAccess([this](const QString &mensagem) { mensagens += mensagem; }));
    }

public:
    Banco banco;
    QStringList mensagens;
};

QByteArray Amostra()
{
    return BytesDoArquivo(kAmostras + "v2000_exportado/dadosr.lst");
}

QByteArray LivroPequeno(int jet = 4)
{
    return LivroFeito(jet).Encher().Bytes();
}

bool ELivroDeHoje(const QByteArray &bytes)
{
    return bytes.startsWith("SQLite format 3");
}
} // namespace

class TesteConversorAccess : public QObject
{
    Q_OBJECT
private slots:
    void init() { QVERIFY(Amostra().size() > 100000); }

    void converteAoAbrir_data();
    void converteAoAbrir();
    void avisaUmaVezEDizOndeEstaOOriginal();
    void aSegundaAberturaNaoConverte();
    void converteTambemAoGravar();
    void contaNoSingular();
    void controlesEmValoresDeUmaLinhaViramBrancos();
    void oProximoNumeroPassaDeTodosOsDados();
    void oOriginalNuncaTomaOLugarDeOutro();
    void oJournalDeOutroLivroNaoVoltaParaONovo();
    void oLivroPodeSerUmAtalho();
    void osDireitosFicamMasOLivroPodeSerGravado();
    void guardaPorCopiaOndeNaoHaElos();
    void oQueNaoTrocaDeLugarNaoDeixaSobras();
    void semConversorOArquivoERecusado();
    void recusadoOArquivoFicaComoEra_data();
    void recusadoOArquivoFicaComoEra();
    void bitsTrocadosNuncaConvertemPelaMetade();
    void esperaAOutraCopiaDoPrograma();
    void desisteSeOArquivoMudar();
    void duasCopiasAoMesmoTempoConvertemUmaVez();
    void oQueNaoSePodeGravarEErro();
    void discoCheioDeVerdadeDeixaOOriginal();
    void arquivosLimitadosDeixamOOriginal();
    void pastaSoDeLeituraDeixaOOriginal();
    void aMorteDeixaOAntigoOuONovo();
    void depoisDaMorteTudoSeConclui();
};

void TesteConversorAccess::converteAoAbrir_data()
{
    QTest::addColumn<QString>("amostra");
    QTest::newRow("Access 97") << "v1997";
    QTest::newRow("Access 2000") << "v2000_exportado";
}

void TesteConversorAccess::converteAoAbrir()
{
    QFETCH(QString, amostra);
    const Esperado esperado(kAmostras + amostra + "/esperado.json");
    const QByteArray original = BytesDoArquivo(kAmostras + amostra + "/dadosr.lst");
    Cozinha cozinha(original);
    QCOMPARE(esperado.Diferencas(cozinha.banco), QStringList());
    QVERIFY(ELivroDeHoje(cozinha.Livro()));
    QCOMPARE(cozinha.Arquivos(), QStringList({"dadosr-access-original.lst", "dadosr.lst"}));
    QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original.lst")), original);
    QCOMPARE(cozinha.mensagens.size(), 1);
}

void TesteConversorAccess::avisaUmaVezEDizOndeEstaOOriginal()
{
    Cozinha cozinha(Amostra());
    cozinha.banco.LerUmaVez();
    cozinha.banco.LerUmaVez();
    const QString guardado = QDir(cozinha.Pasta()).canonicalPath() + "/dadosr-access-original.lst";
    QCOMPARE(
        cozinha.mensagens,
        QStringList("O seu livro de receitas estava no formato antigo (Access) e foi passado para o formato "
                    "atual, com 25 receitas e 79 linhas de ingredientes.\r\n\r\n"
                    "O arquivo original foi guardado, sem nenhuma alteração, com o nome:\r\n" +
                    guardado));
}

void TesteConversorAccess::aSegundaAberturaNaoConverte()
{
    Cozinha cozinha(Amostra());
    QCOMPARE(cozinha.banco.AbrirRecordset(kLista).RecordCount(), 25);
    const QByteArray novo = cozinha.Livro();
    const QStringList arquivos = cozinha.Arquivos();
    QCOMPARE(cozinha.banco.AbrirRecordset(kLista).RecordCount(), 25);
    QCOMPARE(cozinha.Livro(), novo);
    QCOMPARE(cozinha.Arquivos(), arquivos);
    QCOMPARE(cozinha.mensagens.size(), 1);
}

void TesteConversorAccess::converteTambemAoGravar()
{
    Cozinha cozinha(LivroPequeno());
    cozinha.banco.ExecutarSQL("Insert into Receitas(Nome) values ('Nova')");
    const RecordSet rs =
        cozinha.banco.AbrirRecordset("Select id_receitas,Nome from Receitas Order By id_receitas");
    QCOMPARE(rs.RecordCount(), 4);
    QCOMPARE(rs.ValorEm(3, 0).toInt(), 6);
    QCOMPARE(rs.ValorEm(3, 1).toString(), "Nova");
}

void TesteConversorAccess::contaNoSingular()
{
    LivroFeito livro(3);
    livro.Receita(1, "Pão");
    livro.Ingrediente(1, 1, "sal");
    Cozinha cozinha(livro.Bytes());
    cozinha.banco.LerUmaVez();
    QVERIFY2(cozinha.mensagens.value(0).contains("com 1 receita e 1 linha de ingredientes."),
             qPrintable(cozinha.mensagens.value(0)));
}

void TesteConversorAccess::controlesEmValoresDeUmaLinhaViramBrancos()
{
    LivroFeito livro(4);
    livro.Receita(1, "Torta\r\nBcc: x", {{"Preparo", livro.escritor.texto("1\th")}});
    livro.Ingrediente(1, 1, "sal\ngrosso");
    Cozinha cozinha(livro.Bytes());
    const RecordSet rs = cozinha.banco.AbrirRecordset("Select * from Receitas");
    QCOMPARE(rs.Texto(u"Nome"), "Torta  Bcc: x");
    QCOMPARE(rs.Texto(u"Preparo"), "1 h");
    QCOMPARE(rs.Texto(u"Modo"), "Misture Torta\r\nBcc: x");
    QCOMPARE(cozinha.banco.AbrirRecordset("Select * from Ingredientes").Texto(u"Ingrediente"), "sal grosso");
}

void TesteConversorAccess::oProximoNumeroPassaDeTodosOsDados()
{
    LivroFeito livro(4);
    livro.receitas.contador = 41;
    livro.ingredientes.contador = 700;
    Cozinha cozinha(livro.Bytes());
    cozinha.banco.ExecutarSQL("Insert into Receitas(Nome) values ('Nova')");
    cozinha.banco.ExecutarSQL("Insert into Ingredientes(id_receitas,Ingrediente) values (42,'sal')");
    QCOMPARE(cozinha.banco.AbrirRecordset("Select max(id_receitas) from Receitas").Valor(0).toInt(), 42);
    QCOMPARE(cozinha.banco.AbrirRecordset("Select max(id_ingredientes) from Ingredientes").Valor(0).toInt(),
             701);
}

void TesteConversorAccess::oOriginalNuncaTomaOLugarDeOutro()
{
    const QByteArray primeiro = LivroPequeno(3);
    const QByteArray segundo = LivroPequeno(4);
    Cozinha cozinha(primeiro);
    cozinha.banco.LerUmaVez();
    // An old backup brings another old book.
    Gravar(cozinha.banco.CaminhoDoLivro(), segundo);
    cozinha.banco.LerUmaVez();
    QFile::remove(cozinha.banco.CaminhoDoLivro());
    Gravar(cozinha.banco.CaminhoDoLivro(), primeiro);
    cozinha.banco.LerUmaVez();
    QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original.lst")), primeiro);
    QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original-2.lst")), segundo);
    QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original-3.lst")), primeiro);
    QVERIFY(cozinha.mensagens.value(1).endsWith("/dadosr-access-original-2.lst"));
    QVERIFY(cozinha.mensagens.value(2).endsWith("/dadosr-access-original-3.lst"));
    QCOMPARE(cozinha.Arquivos().size(), 4);
}

void TesteConversorAccess::oJournalDeOutroLivroNaoVoltaParaONovo()
{
    Cozinha cozinha(LivroPequeno());
    Gravar(cozinha.Caminho("dadosr.lst-journal"), QByteArray(512, 'j'));
    QCOMPARE(cozinha.banco.AbrirRecordset(kLista).RecordCount(), 3);
    QVERIFY(!QFile::exists(cozinha.Caminho("dadosr.lst-journal")));
}

void TesteConversorAccess::oLivroPodeSerUmAtalho()
{
    const QByteArray original = LivroPequeno();
    Cozinha longe(original);
    Cozinha cozinha(original);
    QVERIFY(QFile::remove(cozinha.banco.CaminhoDoLivro()));
    QVERIFY(QFile::link(longe.banco.CaminhoDoLivro(), cozinha.banco.CaminhoDoLivro()));
    QCOMPARE(cozinha.banco.AbrirRecordset(kLista).RecordCount(), 3);
    QVERIFY(QFileInfo(cozinha.banco.CaminhoDoLivro()).isSymLink());
    QVERIFY(ELivroDeHoje(longe.Livro()));
    QCOMPARE(BytesDoArquivo(longe.Caminho("dadosr-access-original.lst")), original);
    QVERIFY(cozinha.mensagens.value(0).contains(QDir(longe.Pasta()).canonicalPath()));
}

void TesteConversorAccess::osDireitosFicamMasOLivroPodeSerGravado()
{
    Cozinha cozinha(LivroPequeno());
    const QByteArray livro = QFile::encodeName(cozinha.banco.CaminhoDoLivro());
    const auto direitos = [](const QByteArray &caminho) {
        struct stat dados = {};
        return ::stat(caminho.constData(), &dados) == 0 ? dados.st_mode & 0777 : 0;
    };
    QCOMPARE(::chmod(livro.constData(), 0444), 0); // copied from a disc
    cozinha.banco.ExecutarSQL("Insert into Receitas(Nome) values ('Nova')");
    QCOMPARE(direitos(livro), mode_t(0644));
    QCOMPARE(direitos(QFile::encodeName(cozinha.Caminho("dadosr-access-original.lst"))), mode_t(0444));
}

void TesteConversorAccess::guardaPorCopiaOndeNaoHaElos()
{
    const QByteArray original = Amostra();
    Cozinha cozinha(original);
    const QString primeira = TrocaDeArquivo::GuardarPorCopia(cozinha.banco.CaminhoDoLivro());
    const QString segunda = TrocaDeArquivo::GuardarPorCopia(cozinha.banco.CaminhoDoLivro());
    QCOMPARE(primeira, cozinha.Caminho("dadosr-access-original.lst"));
    QCOMPARE(segunda, cozinha.Caminho("dadosr-access-original-2.lst"));
    QCOMPARE(BytesDoArquivo(primeira), original);
    QCOMPARE(BytesDoArquivo(segunda), original);
    QCOMPARE(cozinha.Arquivos().size(), 3);
}

void TesteConversorAccess::oQueNaoTrocaDeLugarNaoDeixaSobras()
{
    Cozinha cozinha(LivroPequeno());
    QVERIFY_EXCEPTION_THROWN(ArquivoSeguro(cozinha.Caminho("nada/livro")).Abrir(), Disco::ErroArquivo);
    QCOMPARE(cozinha.Arquivos(), QStringList("dadosr.lst"));
    QVERIFY_EXCEPTION_THROWN(TrancaDeArquivo(cozinha.Caminho("falta"), 0), ErroBanco);
}

void TesteConversorAccess::semConversorOArquivoERecusado()
{
    const QByteArray original = LivroPequeno();
    Cozinha cozinha(original);
    cozinha.banco.DefinirConversor({});
    QVERIFY(!cozinha.ErroAoAbrir().isEmpty());
    QCOMPARE(cozinha.Livro(), original);
}

void TesteConversorAccess::recusadoOArquivoFicaComoEra_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("motivo");
    LivroFeito vinculado(4);
    vinculado.Encher();
    vinculado.escritor.soNoCatalogo += EscritorJet::Tabela{.nome = "Receitas", .tipoNoCatalogo = 6};
    vinculado.receitas.nome = "Outras";
    LivroFeito chave(4);
    chave.Encher().escritor.chave = 77;
    QTest::newRow("cortado") << Amostra().left(200000) << "danificado ou incompleto";
    QTest::newRow("só o cabeçalho") << Amostra().left(4096) << "danificado ou incompleto";
    QTest::newRow("mais novo") << Amostra().replace(0x14, 1, "\x02") << "mais nova";
    QTest::newRow("vinculado") << vinculado.Bytes() << "vinculada";
    QTest::newRow("codificado de outro modo")
        << chave.Bytes().left(4096) + LivroPequeno().mid(4096) << "codificado (protegido)";
}

void TesteConversorAccess::recusadoOArquivoFicaComoEra()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, motivo);
    Cozinha cozinha(bytes);
    for (int vez = 0; vez < 2; ++vez) {
        const QString erro = cozinha.ErroAoAbrir();
        QVERIFY2(erro.contains(motivo), qPrintable(erro));
        QVERIFY(
            erro.startsWith("O livro de receitas está no formato antigo (Access) e não pôde ser convertido. "
                            "O arquivo não foi alterado.\r\n\r\n"));
        QVERIFY(erro.contains(cozinha.banco.CaminhoDoLivro()));
        QCOMPARE(cozinha.Livro(), bytes);
        QCOMPARE(cozinha.Arquivos(), QStringList("dadosr.lst"));
        QVERIFY(cozinha.mensagens.isEmpty());
    }
}

void TesteConversorAccess::bitsTrocadosNuncaConvertemPelaMetade()
{
    const QByteArray inteiro = LivroPequeno(3);
    QRandomGenerator acaso(2005);
    int convertidos = 0;
    for (int i = 0; i < 300; ++i) {
        QByteArray bytes = inteiro;
        for (int bits = acaso.bounded(1, 12); bits > 0; --bits) {
            const auto lugar = static_cast<qsizetype>(20 + acaso.bounded(bytes.size() - 20));
            bytes[lugar] = static_cast<char>(bytes[lugar] ^ 1 << acaso.bounded(8));
        }
        Cozinha cozinha(bytes);
        if (cozinha.ErroAoAbrir().isEmpty()) {
            ++convertidos;
            QCOMPARE(cozinha.banco.AbrirRecordset(kLista).RecordCount(), 3);
            QCOMPARE(cozinha.banco.AbrirRecordset("Select * from Ingredientes").RecordCount(), 6);
            QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original.lst")), bytes);
        } else {
            QCOMPARE(cozinha.Livro(), bytes);
            QCOMPARE(cozinha.Arquivos(), QStringList("dadosr.lst"));
        }
    }
    QVERIFY(convertidos > 0 && convertidos < 300);
}

// ---- other copies of the program

void TesteConversorAccess::esperaAOutraCopiaDoPrograma()
{
    Cozinha cozinha(LivroPequeno());
    QVERIFY_EXCEPTION_THROWN(
        {
            TrancaDeArquivo nossa(cozinha.banco.CaminhoDoLivro(), 0);
            QVERIFY(nossa.Trancado());
            TrancaDeArquivo deles(cozinha.banco.CaminhoDoLivro(), 1);
        },
        ErroBanco);
    TrancaDeArquivo livre(cozinha.banco.CaminhoDoLivro(), 0);
    QVERIFY(livre.Trancado());
}

void TesteConversorAccess::desisteSeOArquivoMudar()
{
    Cozinha cozinha(LivroPequeno());
    const TrancaDeArquivo tranca(cozinha.banco.CaminhoDoLivro(), 0);
    QVERIFY(tranca.AindaEOMesmo());
    Gravar(cozinha.Caminho("outro"), LivroPequeno());
    QCOMPARE(::rename(QFile::encodeName(cozinha.Caminho("outro")).constData(),
                      QFile::encodeName(cozinha.banco.CaminhoDoLivro()).constData()),
             0);
    QVERIFY(!tranca.AindaEOMesmo());
    const TrancaDeArquivo nova(cozinha.banco.CaminhoDoLivro(), 0);
    QVERIFY(nova.AindaEOMesmo());
    Gravar(cozinha.banco.CaminhoDoLivro(), "mais curto");
    QVERIFY(!nova.AindaEOMesmo());
}

namespace
{
void ComecarFilho(QProcess &filho, const QString &pasta)
{
    filho.start(QCoreApplication::applicationFilePath(), {kFilho, pasta});
    QVERIFY(filho.waitForStarted());
}

/// The old file as it was, or the finished new book with the old file beside it.
void ConferirDepoisDaMorte(const Cozinha &cozinha, const QByteArray &original, int receitas, bool &convertido)
{
    convertido = ELivroDeHoje(cozinha.Livro());
    if (convertido) {
        QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original.lst")), original);
        Banco banco(cozinha.Pasta()); // without a converter
        QCOMPARE(banco.AbrirRecordset("Select id_receitas from Receitas").RecordCount(), receitas);
    } else {
        QVERIFY(cozinha.Livro() == original);
    }
}

QByteArray LivroMedio(int receitas)
{
    LivroFeito livro(4);
    qint32 linha = 0;
    for (qint32 i = 1; i <= receitas; ++i) {
        livro.Receita(
            i, QString("Receita número %1").arg(i),
            {{"Modo", livro.escritor.memo(livro.escritor.texto(QString("Mexa bem. ").repeated(60)))}});
        for (int j = 0; j < 8; ++j)
            livro.Ingrediente(++linha, i, QString("ingrediente %1").arg(j));
    }
    return livro.Bytes();
}
} // namespace

void TesteConversorAccess::duasCopiasAoMesmoTempoConvertemUmaVez()
{
    constexpr int kReceitas = 300;
    const QByteArray original = LivroMedio(kReceitas);
    for (int vez = 0; vez < 5; ++vez) {
        Cozinha cozinha(original);
        std::array<QProcess, 4> filhos;
        for (QProcess &filho : filhos)
            ComecarFilho(filho, cozinha.Pasta());
        for (QProcess &filho : filhos) {
            QVERIFY(filho.waitForFinished());
            QCOMPARE(filho.exitStatus(), QProcess::NormalExit);
            QCOMPARE(filho.exitCode(), 0);
        }
        bool convertido = false;
        ConferirDepoisDaMorte(cozinha, original, kReceitas, convertido);
        QVERIFY(convertido);
        QCOMPARE(cozinha.Arquivos(), QStringList({"dadosr-access-original.lst", "dadosr.lst"}));
    }
}

// ---- faults

void TesteConversorAccess::oQueNaoSePodeGravarEErro()
{
    const LivroAccess livro = Ler(LivroPequeno());
    // A device that takes no byte, a folder, and a place that does not exist.
    for (const char *caminho : {"/dev/full", "/", "/nao/existe"})
        QVERIFY_EXCEPTION_THROWN(GravarNovoLivro(caminho, livro), ErroBanco);
}

namespace
{
/// A small disk in memory; only the superuser can make one.
class DiscoPequeno
{
public:
    explicit DiscoPequeno(qint64 bytes)
    {
        const QByteArray opcoes = "size=" + QByteArray::number(bytes);
        m_montado = m_pasta.isValid() && mount("tmpfs", QFile::encodeName(m_pasta.path()).constData(),
                                               "tmpfs", 0, opcoes.constData()) == 0;
    }
    ~DiscoPequeno()
    {
        if (m_montado)
            umount2(QFile::encodeName(m_pasta.path()).constData(), MNT_DETACH);
    }
    DiscoPequeno(const DiscoPequeno &) = delete;
    DiscoPequeno &operator=(const DiscoPequeno &) = delete;
    bool Montado() const { return m_montado; }
    QString Pasta() const { return m_pasta.path(); }

private:
    QTemporaryDir m_pasta;
    bool m_montado = false;
};
} // namespace

void TesteConversorAccess::discoCheioDeVerdadeDeixaOOriginal()
{
    const QByteArray original = Amostra();
    int cheios = 0;
    QString faltaDeEspaco;
    // From no room at all to plenty.
    for (const qint64 sobra : {0, 4096, 40000, 120000, 2000000}) {
        DiscoPequeno disco(original.size() + 4096 + sobra);
        if (!disco.Montado())
            QSKIP("A small disk cannot be mounted here: not the superuser");
        Banco banco(disco.Pasta());
        QString mensagem;
        banco.DefinirConversor(ConversorAccess([&](const QString &texto) { mensagem = texto; }));
        Gravar(banco.CaminhoDoLivro(), original);
        try {
            banco.LerUmaVez();
            QVERIFY(!mensagem.isEmpty());
            QCOMPARE(BytesDoArquivo(disco.Pasta() + "/dadosr-access-original.lst"), original);
        } catch (const ErroBanco &erro) {
            ++cheios;
            faltaDeEspaco += erro.Mensagem();
            QVERIFY2(erro.Mensagem().contains("O arquivo não foi alterado."), qPrintable(erro.Mensagem()));
            QCOMPARE(BytesDoArquivo(banco.CaminhoDoLivro()), original);
            QCOMPARE(QDir(disco.Pasta()).entryList(QDir::Files | QDir::Hidden), QStringList("dadosr.lst"));
        }
    }
    QVERIFY(cheios >= 2 && cheios < 5);
    QVERIFY2(faltaDeEspaco.contains("Não há espaço no disco"), qPrintable(faltaDeEspaco));
}

// Files that may not grow beyond a size: writes fail in the middle, for every user.
void TesteConversorAccess::arquivosLimitadosDeixamOOriginal()
{
    rlimit antes{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &antes), 0);
    const auto sinal = std::signal(SIGXFSZ, SIG_IGN);
    const QByteArray original = LivroPequeno();
    int falhas = 0;
    for (rlim_t limite = 0; limite < 40960; limite += 4096) {
        Cozinha cozinha(original);
        const rlimit pouco{limite, antes.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &pouco), 0);
        const QString erro = cozinha.ErroAoAbrir();
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &antes), 0);
        if (erro.isEmpty()) {
            QCOMPARE(cozinha.banco.AbrirRecordset(kLista).RecordCount(), 3);
            continue;
        }
        ++falhas;
        QCOMPARE(cozinha.Livro(), original);
        QCOMPARE(cozinha.Arquivos(), QStringList("dadosr.lst"));
        QVERIFY(cozinha.mensagens.isEmpty());
        QCOMPARE(cozinha.ErroAoAbrir(), QString()); // with the fault gone
    }
    std::signal(SIGXFSZ, sinal);
    QVERIFY(falhas > 2);
}

void TesteConversorAccess::pastaSoDeLeituraDeixaOOriginal()
{
    constexpr uid_t kNinguem = 65534; // the superuser may write anywhere, so somebody else opens the book
    const bool superusuario = ::geteuid() == 0;
    const QByteArray original = LivroPequeno();
    Cozinha cozinha(original);
    const QByteArray pasta = QFile::encodeName(cozinha.Pasta());
    QCOMPARE(::chmod(pasta.constData(), 0555), 0);
    if (superusuario)
        QCOMPARE(::seteuid(kNinguem), 0);
    const QString erro = cozinha.ErroAoAbrir();
    if (superusuario)
        QCOMPARE(::seteuid(0), 0);
    QCOMPARE(::chmod(pasta.constData(), 0755), 0);
    QVERIFY2(erro.contains("Não se pode gravar na pasta do livro"), qPrintable(erro));
    QCOMPARE(cozinha.Livro(), original);
    QCOMPARE(cozinha.ErroAoAbrir(), QString()); // with the rights given back
}

// Killed at moments spread over the whole conversion, and as soon as a step of it can be seen from outside.
void TesteConversorAccess::aMorteDeixaOAntigoOuONovo()
{
    constexpr int kMortes = 48;
    constexpr int kReceitas = 400;
    const QByteArray original = LivroMedio(kReceitas);

    // How long an undisturbed one takes.
    QElapsedTimer relogio;
    relogio.start();
    {
        Cozinha cozinha(original);
        QProcess filho;
        ComecarFilho(filho, cozinha.Pasta());
        QVERIFY(filho.waitForFinished());
        QCOMPARE(filho.exitCode(), 0);
    }
    const qint64 duracaoUs = relogio.nsecsElapsed() / 1000;

    QRandomGenerator acaso(9);
    int antigos = 0;
    int novos = 0;
    int noMeio = 0;
    for (int vez = 0; vez < kMortes; ++vez) {
        Cozinha cozinha(original);
        QProcess filho;
        ComecarFilho(filho, cozinha.Pasta());
        const auto acabou = [&filho] {
            return filho.waitForFinished(0) || filho.state() == QProcess::NotRunning;
        };
        if (vez % 3 == 0) {
            QThread::usleep(static_cast<unsigned long>(acaso.bounded(duracaoUs)));
        } else {
            // As soon as the new book is being written; as soon as the old one has its second name.
            const QStringList sinal =
                vez % 3 == 1 ? QStringList("~cozinhario-*") : QStringList("dadosr-access-original.lst");
            while (!acabou() && QDir(cozinha.Pasta()).entryList(sinal, QDir::Files).isEmpty())
                QThread::usleep(20);
            if (vez % 3 == 1)
                QThread::usleep(static_cast<unsigned long>(acaso.bounded(duracaoUs / 4)));
        }
        filho.kill();
        QVERIFY(filho.state() == QProcess::NotRunning || filho.waitForFinished());
        noMeio += cozinha.Arquivos().filter("~cozinhario-").size() == 1;
        bool convertido = false;
        ConferirDepoisDaMorte(cozinha, original, kReceitas, convertido);
        (convertido ? novos : antigos) += 1;

        // The next start finishes the work and clears away what was left.
        QCOMPARE(cozinha.banco.AbrirRecordset("Select id_receitas from Receitas").RecordCount(), kReceitas);
        QCOMPARE(cozinha.mensagens.size(), convertido ? 0 : 1);
        QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original.lst")), original);
        if (!convertido)
            QCOMPARE(cozinha.Arquivos(), QStringList({"dadosr-access-original.lst", "dadosr.lst"}));
    }
    qInfo("%d killed: %d old books, %d of them while the new one was being written, %d new books", kMortes,
          antigos, noMeio, novos);
    QVERIFY(antigos > 0);
}

void TesteConversorAccess::depoisDaMorteTudoSeConclui()
{
    const QByteArray original = LivroPequeno();
    Cozinha cozinha(original);
    // Killed between the second name and the exchange, with a half-written book left behind.
    QVERIFY(::link(QFile::encodeName(cozinha.banco.CaminhoDoLivro()).constData(),
                   QFile::encodeName(cozinha.Caminho("dadosr-access-original.lst")).constData()) == 0);
    Gravar(cozinha.Caminho("dadosr.lst.convertendo-AbCdEf"), "SQLite format 3, half of it");
    Gravar(cozinha.Caminho("dadosr.lst.convertendo-notas.txt"), "do usuário");
    cozinha.banco.LerUmaVez();
    QCOMPARE(cozinha.Arquivos(),
             QStringList({"dadosr-access-original.lst", "dadosr.lst", "dadosr.lst.convertendo-notas.txt"}));
    QCOMPARE(BytesDoArquivo(cozinha.Caminho("dadosr-access-original.lst")), original);
    QVERIFY(cozinha.mensagens.value(0).endsWith("/dadosr-access-original.lst"));
}

namespace
{
/// What the child process does: opens the book in the folder.
int Converter(const QString &pasta)
{
    Banco banco(pasta);
    banco.DefinirConversor(ConversorAccess());
    try {
        banco.LerUmaVez();
        return 0;
    } catch (const ErroBanco &erro) {
        qWarning("%s", erro.what());
        return 1;
    }
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication programa(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], kFilho) == 0)
        return Converter(QFile::decodeName(argv[2]));
    TesteConversorAccess teste;
    return QTest::qExec(&teste, argc, argv);
}

#include "teste_conversor_access.moc"
