// How files are written: whole or not at all, through no link, for nobody's eyes but the cook's.
#include "base/ArquivoDeTrabalho.h"
#include "base/ArquivoSeguro.h"
#include "base/RenomearSobre.h"
#include "base/tests/LimiteDeArquivo.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
void Escrever(const QString &caminho, const QByteArray &bytes)
{
    QFile arquivo(caminho);
    QVERIFY(arquivo.open(QIODevice::WriteOnly));
    QCOMPARE(arquivo.write(bytes), bytes.size());
}

QByteArray Ler(const QString &caminho)
{
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(none)");
}

mode_t Modo(const QString &caminho)
{
    struct stat dados = {};
    return ::lstat(QFile::encodeName(caminho).constData(), &dados) == 0 ? dados.st_mode & 0777 : 0;
}

void DarModo(const QString &caminho, mode_t modo)
{
    QCOMPARE(::chmod(QFile::encodeName(caminho).constData(), modo), 0);
}

QStringList Nomes(const QString &pasta)
{
    return QDir(pasta).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                 QDir::Name);
}

/// errno of the failure, 0 for none.
template <class Operacao>
int Codigo(Operacao operacao)
{
    try {
        operacao();
    } catch (const Disco::ErroArquivo &erro) {
        return erro.Codigo();
    }
    return 0;
}
} // namespace

class TesteArquivoSeguro : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pasta = std::make_unique<QTemporaryDir>();
        m_caminho = m_pasta->filePath("a.bck");
        ::umask(022);
    }

    void semConfirmarOAnteriorFica()
    {
        Escrever(m_caminho, "anterior");
        {
            ArquivoSeguro escrita(m_caminho);
            escrita.Abrir();
            escrita.Escrever("novo");
            QCOMPARE(Nomes(m_pasta->path()).size(), 2);
        }
        QCOMPARE(Ler(m_caminho), "anterior");
        QCOMPARE(Nomes(m_pasta->path()), {"a.bck"});
    }

    void confirmadoSubstitui()
    {
        Escrever(m_caminho, "um conteudo anterior mais longo");
        ArquivoSeguro::Gravar(m_caminho, "novo");
        QCOMPARE(Ler(m_caminho), "novo");
        QCOMPARE(Nomes(m_pasta->path()), {"a.bck"});
    }

    void guardaOsDireitosDoAnterior()
    {
        for (const mode_t modo : {0600, 0640, 0664, 0444}) {
            Escrever(m_caminho, "anterior");
            DarModo(m_caminho, modo);
            ArquivoSeguro::Gravar(m_caminho, "novo");
            QCOMPARE(Modo(m_caminho), modo | 0600); // a read-only one is replaced, and can be again
            QFile::remove(m_caminho);
        }
    }

    void aoLadoDeUmLivroPrivadoTudoEPrivado()
    {
        const QString livro = m_pasta->filePath("dadosr.lst");
        Escrever(livro, "livro");
        DarModo(livro, 0600);
        OpcoesDeEscrita opcoes;
        opcoes.modelo = livro;
        ArquivoSeguro escrita(m_caminho, opcoes);
        escrita.Abrir();
        QCOMPARE(Modo(escrita.Trabalho()), mode_t(0600)); // from its first moment
        escrita.Confirmar();
        QCOMPARE(Modo(m_caminho), mode_t(0600));
        DarModo(m_caminho, 0644); // from the days when the book was not private
        ArquivoSeguro::Gravar(m_caminho, "outro", opcoes);
        QCOMPARE(Modo(m_caminho), mode_t(0600));
        DarModo(livro, 0644);
        ArquivoSeguro::Gravar(m_pasta->filePath("b"), "b", opcoes);
        QCOMPARE(Modo(m_pasta->filePath("b")), mode_t(0644));
    }

    void umLinkESubstituidoNaoSeguido()
    {
        const QString alheio = m_pasta->filePath("alheio");
        Escrever(alheio, "alheio");
        QVERIFY(QFile::link(alheio, m_caminho));
        ArquivoSeguro::Gravar(m_caminho, "novo");
        QCOMPARE(Ler(alheio), "alheio");
        QVERIFY(!QFileInfo(m_caminho).isSymLink());
        QCOMPARE(Ler(m_caminho), "novo");
    }

    void umLinkQueOCozinheiroEscolheuLevaAoArquivo()
    {
        const QString verdadeiro = m_pasta->filePath("verdadeiro");
        Escrever(verdadeiro, "anterior");
        QVERIFY(QFile::link(verdadeiro, m_caminho));
        OpcoesDeEscrita opcoes;
        opcoes.seguirLink = true;
        ArquivoSeguro::Gravar(m_caminho, "novo", opcoes);
        QVERIFY(QFileInfo(m_caminho).isSymLink());
        QCOMPARE(Ler(verdadeiro), "novo");
    }

    void soUmArquivoESubstituido()
    {
        QVERIFY(QDir(m_pasta->path()).mkdir("a.bck"));
        QCOMPARE(Codigo([&] { ArquivoSeguro::Gravar(m_caminho, "novo"); }), EISDIR);
        const QString cano = m_pasta->filePath("cano");
        QCOMPARE(::mkfifo(QFile::encodeName(cano).constData(), 0600), 0);
        QCOMPARE(Codigo([&] { ArquivoSeguro::Gravar(cano, "novo"); }), EINVAL);
        QCOMPARE(Codigo([&] { ArquivoSeguro::Gravar(m_pasta->filePath("nada/a.bck"), "novo"); }), ENOENT);
        QCOMPARE(Nomes(m_pasta->path()), (QStringList{"a.bck", "cano"}));
    }

    void umNomeDe250BytesServe()
    {
        const QString longo = m_pasta->filePath(QString("n").repeated(246) + ".bck");
        ArquivoSeguro::Gravar(longo, "novo");
        QCOMPARE(Ler(longo), "novo");
    }

    void semEspacoOAnteriorFicaEOTextoDiz()
    {
        Escrever(m_caminho, "anterior");
        QString mensagem;
        {
            const LimiteDeArquivo limite(1000);
            try {
                ArquivoSeguro::Gravar(m_caminho, QByteArray(5000, 'x'));
            } catch (const Disco::ErroArquivo &erro) {
                QCOMPARE(erro.Codigo(), EFBIG);
                mensagem = erro.Mensagem();
            }
        }
        QVERIFY2(mensagem.startsWith("Não foi possível gravar o arquivo:\r\n" + m_caminho),
                 qPrintable(mensagem));
        QCOMPARE(Ler(m_caminho), "anterior");
        QCOMPARE(Nomes(m_pasta->path()), {"a.bck"});
    }

    void seNovoNuncaSubstitui()
    {
        Escrever(m_caminho, "anterior");
        ArquivoSeguro escrita(m_caminho);
        escrita.Abrir();
        escrita.Escrever("novo");
        QVERIFY(!escrita.ConfirmarSeNovo());
        QCOMPARE(Ler(m_caminho), "anterior");
        QVERIFY(escrita.ConfirmarSeNovo(m_pasta->filePath("b.bck")));
        QCOMPARE(Ler(m_pasta->filePath("b.bck")), "novo");
        QCOMPARE(Nomes(m_pasta->path()), (QStringList{"a.bck", "b.bck"}));
    }

    void soSobrasAbandonadasSaoRemovidas()
    {
        ArquivoSeguro escrita(m_caminho);
        escrita.Abrir();
        const QString viva = QFileInfo(escrita.Trabalho()).fileName();
        const QString morta = "~cozinhario-0123456789abcdef.tmp";
        const QString doUsuario = "~cozinhario-receitas.tmp";
        Escrever(m_pasta->filePath(morta), "left by a kill");
        Escrever(m_pasta->filePath(doUsuario), "not ours");
        ArquivoSeguro::RemoverSobras(m_pasta->path());
        const QStringList nomes = Nomes(m_pasta->path());
        QVERIFY(nomes.contains(viva));
        QVERIFY(nomes.contains(doUsuario));
        QVERIFY(!nomes.contains(morta));
    }

    void arquivoDeTrabalhoNaoPassaPorUmLink()
    {
        const QString alheio = m_pasta->filePath("alheio");
        Escrever(alheio, "alheio");
        QVERIFY(QFile::link(alheio, m_caminho));
        {
            ArquivoDeTrabalho trabalho(m_caminho);
            trabalho.Abrir();
            QCOMPARE(trabalho.Arquivo().write("novo"), 4);
            QCOMPARE(Modo(m_caminho), mode_t(0600));
            QCOMPARE(Ler(m_caminho), "novo");
        }
        QCOMPARE(Ler(alheio), "alheio");
        QCOMPARE(Nomes(m_pasta->path()), {"alheio"});
    }

    void doisArquivosDeTrabalhoDoMesmoNomeNaoSeMisturam()
    {
        ArquivoDeTrabalho segundo(m_caminho);
        {
            ArquivoDeTrabalho primeiro(m_caminho);
            primeiro.Abrir();
            primeiro.Arquivo().write("primeiro");
            segundo.Abrir();
            segundo.Arquivo().write("segundo");
            primeiro.Arquivo().seek(0);
            QCOMPARE(primeiro.Arquivo().readAll(), "primeiro");
        }
        QCOMPARE(Ler(m_caminho), "segundo"); // the end of the first leaves the second's alone
        segundo.Remover();
        QVERIFY(!QFile::exists(m_caminho));
    }

    void semNomeNadaFicaNaPasta()
    {
        ArquivoDeTrabalho trabalho(m_pasta->filePath("nada/trabalho"));
        QCOMPARE(Codigo([&] { trabalho.Abrir(); }), ENOENT);
        trabalho.AbrirSemNome(m_pasta->path());
        QCOMPARE(trabalho.Arquivo().write("texto"), 5);
        QVERIFY(trabalho.Arquivo().seek(0));
        QCOMPARE(trabalho.Arquivo().readAll(), "texto");
        QCOMPARE(Nomes(m_pasta->path()), QStringList());
    }

    void umNomeQueNaoETextoEAlcancado()
    {
        const QByteArray pasta = QFile::encodeName(m_pasta->filePath("p")) + "\xE3o";
        QCOMPARE(::mkdir(pasta.constData(), 0700), 0);
        const QString caminho = Disco::Alcancavel(pasta);
        ArquivoSeguro::Gravar(caminho + "/a", "novo");
        const int arquivo = ::open((pasta + "/a").constData(), O_RDONLY | O_CLOEXEC);
        QVERIFY(arquivo >= 0);
        ::close(arquivo);
        QCOMPARE(Disco::Alcancavel(QFile::encodeName(m_pasta->path())), m_pasta->path());
        ::unlink((pasta + "/a").constData());
        ::rmdir(pasta.constData());
    }

    void umaPastaQueELinkNaoEPasta()
    {
        const QString alheia = m_pasta->filePath("alheia");
        QVERIFY(Disco::FazerPasta(alheia));
        QVERIFY(Disco::FazerPasta(alheia)); // it may be there
        Escrever(alheia + "/a", "alheio");
        const QString link = m_pasta->filePath("link");
        QVERIFY(QFile::link(alheia, link));
        QVERIFY(!Disco::FazerPasta(link));
        QVERIFY(Disco::RemoverArvore(link));
        QCOMPARE(Ler(alheia + "/a"), "alheio");
        QVERIFY(QFile::link(m_pasta->path(), alheia + "/de-volta"));
        QVERIFY(Disco::RemoverArvore(alheia));
        QCOMPARE(Nomes(m_pasta->path()), QStringList());
    }

    void renomearSobreSubstitui()
    {
        Escrever(m_pasta->filePath("a"), "novo");
        Escrever(m_pasta->filePath("b"), "anterior");
        QVERIFY(Disco::RenomearSobre(m_pasta->filePath("a"), m_pasta->filePath("b")));
        QCOMPARE(Ler(m_pasta->filePath("b")), "novo");
        QVERIFY(!QFile::exists(m_pasta->filePath("a")));
        QVERIFY(!Disco::RenomearSobre(m_pasta->filePath("a"), m_pasta->filePath("b")));
        QCOMPARE(Ler(m_pasta->filePath("b")), "novo");
    }

private:
    std::unique_ptr<QTemporaryDir> m_pasta;
    QString m_caminho;
};

QTEST_GUILESS_MAIN(TesteArquivoSeguro)
#include "teste_arquivo_seguro.moc"
