#include "base/Ponteiro.h"
#include "mail/EnvioEmail.h"
#include "mail/MensagemReceita.h"
#include "mail/tests/Duplos.h"
#include "mail/tests/Mensagens.h"
#include "store/Banco.h"
#include "store/Comandos.h"
#include "store/Figuras.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
const QString kSite = "https://www.tamarel.example";

QByteArray Ler(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(does not exist)");
}

void Escrever(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}
} // namespace

/// Each test sends from a fresh book of one recipe, number 1, whose picture is stored.
class TesteMail : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void foraDaTelaDeDadosRecusa_data();
    void foraDaTelaDeDadosRecusa();
    void tipoTresOuMaisRecusa_data();
    void tipoTresOuMaisRecusa();
    void gravaAMensagemEAbre();
    void figuraGuardadaVemDaPasta_data();
    void figuraGuardadaVemDaPasta();
    void figuraEscolhidaENaoSalvaVemDoSeuCaminho();
    void semFiguraNaoLeNada_data();
    void semFiguraNaoLeNada();
    void figuraQueFaltaNaoEAvisada();
    void enviarDuasVezesSobrescreve();
    void falhaAoGravarEDitaEDeixaAAnterior();
    void discoCheioEDitoEDeixaAAnterior();
    void controlesFicamComoEstavam();

private:
    void Enviar(const ReceitaNaTela &receita);
    QByteArray Gravada() const { return Ler(m_banco->Caminho("~temp.eml")); }

    std::unique_ptr<QTemporaryDir> m_pasta;
    std::unique_ptr<Banco> m_banco;
    std::unique_ptr<Figuras> m_figuras;
    AvisosDeTeste m_avisos;
    TelasDeTeste m_telas;
    AbridorDeTeste m_abridor;
    ReceitaNaTela m_receita;
};

void TesteMail::init()
{
    m_pasta = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pasta->isValid());
    m_banco = std::make_unique<Banco>(m_pasta->path());
    m_figuras = std::make_unique<Figuras>(*m_banco);
    Comandos::Receita bolo;
    bolo.Nome = "Bolo";
    bolo.Modo = "Asse.";
    m_banco->ExecutarSQL(Comandos::SqlInserirReceita(bolo, QDate(2005, 11, 21)));
    m_banco->ExecutarSQL(Comandos::SqlGravarFigura(1));
    m_figuras->GravarFigura("figura guardada", 1);

    m_avisos = {};
    m_telas = {};
    m_abridor = {};
    m_receita = {};
    m_receita.txtNome = "Bolo";
    m_receita.txtModo = "Asse.";
    m_receita.txtNroReceita = "1";
    m_receita.figuraMostrada = true;
    m_receita.imgFigura = "OLD";
}

void TesteMail::cleanup()
{
    QVERIFY(!Ponteiro::EmEspera());
}

void TesteMail::Enviar(const ReceitaNaTela &receita)
{
    EnvioEmail(*m_banco, *m_figuras, m_avisos, m_telas, m_abridor, kSite).imgEmail_Click(receita);
}

void TesteMail::foraDaTelaDeDadosRecusa_data()
{
    QTest::addColumn<QString>("tela");
    QTest::newRow("nenhuma tela") << "";
    QTest::newRow("lista") << "Listagem";
    QTest::newRow("pesquisa") << "Pesquisa";
}

void TesteMail::foraDaTelaDeDadosRecusa()
{
    QFETCH(QString, tela);
    m_telas.atual = tela;
    m_receita.txtTipoRect = "3"; // the view is looked at first
    Enviar(m_receita);
    QCOMPARE(m_avisos.textos, {"Necessário estar na Tela de Dados de uma Receita para o Envio!"});
    QCOMPARE(m_avisos.icones, {Avisos::Icone::Parada});
    QVERIFY(!QFile::exists(m_banco->Caminho("~temp.eml")));
    QVERIFY(m_abridor.arquivos.isEmpty());
}

void TesteMail::tipoTresOuMaisRecusa_data()
{
    QTest::addColumn<QString>("tipo");
    QTest::addColumn<bool>("recusada");
    QTest::newRow("vazio") << "" << false;
    QTest::newRow("texto") << "abc" << false;
    QTest::newRow("2") << "2" << false;
    QTest::newRow("2 e fração") << "2.9" << false;
    QTest::newRow("3") << "3" << true;
    QTest::newRow("3 e fração") << " 3.5" << true;
    QTest::newRow("10") << "10" << true;
    QTest::newRow("negativo") << "-4" << false;
}

void TesteMail::tipoTresOuMaisRecusa()
{
    QFETCH(QString, tipo);
    QFETCH(bool, recusada);
    m_receita.txtTipoRect = tipo;
    Enviar(m_receita);
    QCOMPARE(QFile::exists(m_banco->Caminho("~temp.eml")), !recusada);
    QCOMPARE(m_abridor.arquivos.size(), recusada ? 0 : 1);
    if (recusada) {
        QCOMPARE(m_avisos.textos, {"Esta Receita não pode ser Enviada por Email!"});
        QCOMPARE(m_avisos.icones, {Avisos::Icone::Informacao});
    } else {
        QVERIFY(m_avisos.textos.isEmpty());
    }
}

void TesteMail::gravaAMensagemEAbre()
{
    const ReceitaNaTela receita = MensagensGuardadas()[1].receita; // without a picture
    Enviar(receita);
    QCOMPARE(Gravada(), Ler(PASTA_FONTES "/tests/data/sem_figura_por_receita.eml"));
    QCOMPARE(m_abridor.arquivos, {m_banco->Caminho("~temp.eml")});
    QCOMPARE(QDir(m_pasta->path()).entryList({"~temp*"}, QDir::Files), {"~temp.eml"});
    QVERIFY(m_avisos.textos.isEmpty());
}

void TesteMail::figuraGuardadaVemDaPasta_data()
{
    QTest::addColumn<QString>("tag");
    QTest::newRow("OLD") << "OLD";
    QTest::newRow("tag vazia") << "";
}

void TesteMail::figuraGuardadaVemDaPasta()
{
    QFETCH(QString, tag);
    m_receita.imgFigura = tag;
    Enviar(m_receita);
    QCOMPARE(Gravada(), MensagemReceita::Montar(m_receita, "figura guardada", kSite));
}

void TesteMail::figuraEscolhidaENaoSalvaVemDoSeuCaminho()
{
    const QString escolhida = m_pasta->filePath("minha foto.jpg");
    Escrever(escolhida, FiguraDeExemplo());
    m_receita.imgFigura = escolhida;
    Enviar(m_receita);
    QCOMPARE(Gravada(), MensagemReceita::Montar(m_receita, FiguraDeExemplo(), kSite));
}

void TesteMail::semFiguraNaoLeNada_data()
{
    QTest::addColumn<bool>("temFigura");
    QTest::addColumn<QString>("tag");
    QTest::newRow("controle vazio") << false << "OLD";
    QTest::newRow("figura de enfeite") << true << "NADA";
}

void TesteMail::semFiguraNaoLeNada()
{
    QFETCH(bool, temFigura);
    QFETCH(QString, tag);
    m_receita.figuraMostrada = temFigura;
    m_receita.imgFigura = tag;
    Enviar(m_receita);
    QCOMPARE(Gravada(), MensagemReceita::Montar(m_receita, std::nullopt, kSite));
}

void TesteMail::figuraQueFaltaNaoEAvisada()
{
    const QByteArray vazia = MensagemReceita::Montar(m_receita, QByteArray(), kSite);

    QVERIFY(QFile::remove(m_figuras->Caminho("F0000001.img")));
    Enviar(m_receita);
    QCOMPARE(Gravada(), vazia);

    m_receita.imgFigura = m_pasta->filePath("sumiu.jpg");
    Enviar(m_receita);
    QCOMPARE(Gravada(), vazia);

    m_receita.imgFigura = "OLD";
    m_receita.txtNroReceita = "999"; // no such recipe
    Enviar(m_receita);
    QCOMPARE(Gravada(), vazia);

    QVERIFY(m_avisos.textos.isEmpty());
    QCOMPARE(m_abridor.arquivos.size(), 3);
}

void TesteMail::enviarDuasVezesSobrescreve()
{
    m_receita.txtModo = QString(5000, 'x');
    Enviar(m_receita);
    m_receita.txtModo = "curto";
    Enviar(m_receita);
    QCOMPARE(Gravada(), MensagemReceita::Montar(m_receita, "figura guardada", kSite));
    QCOMPARE(m_abridor.arquivos.size(), 2);
}

void TesteMail::falhaAoGravarEDitaEDeixaAAnterior()
{
    QVERIFY(QDir().mkdir(m_banco->Caminho("~temp.eml"))); // nothing can be renamed over a folder
    Enviar(m_receita);
    QCOMPARE(m_avisos.textos,
             {"Impossível Gravar a Mensagem no Arquivo " + m_banco->Caminho("~temp.eml") + "!"});
    QCOMPARE(m_avisos.icones, {Avisos::Icone::Parada});
    QVERIFY(m_abridor.arquivos.isEmpty());
    QVERIFY(QFileInfo(m_banco->Caminho("~temp.eml")).isDir());
}

// The whole message fits into the buffer: only the last write meets the full disk.
void TesteMail::discoCheioEDitoEDeixaAAnterior()
{
    Escrever(m_banco->Caminho("~temp.eml"), "a anterior");
    m_receita.figuraMostrada = false;
    {
        const LimiteDeArquivo disco(1000);
        Enviar(m_receita);
    }
    QCOMPARE(m_avisos.textos,
             {"Impossível Gravar a Mensagem no Arquivo " + m_banco->Caminho("~temp.eml") + "!"});
    QCOMPARE(Gravada(), QByteArray("a anterior"));
    QVERIFY(m_abridor.arquivos.isEmpty());
}

void TesteMail::controlesFicamComoEstavam()
{
    const ReceitaNaTela antes = m_receita;
    Enviar(m_receita);
    QCOMPARE(m_receita.txtModo, antes.txtModo);
    QCOMPARE(m_telas.atual, "Detalhe");
    const RecordSet rs = m_banco->AbrirRecordset(Comandos::SqlReceita(1));
    QCOMPARE(rs.Texto(u"Figura"), "F0000001.img");
}

QTEST_GUILESS_MAIN(TesteMail)
#include "teste_mail.moc"
