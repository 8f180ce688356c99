// The hand-over to the desktop, for real: the desktop services of a window system that has no window manager
// (a virtual display made for this test) run the "xdg-open" they find first, and that one is ours.
#include "base/AbridorQt.h"
#include "mail/EnvioEmail.h"
#include "mail/tests/Duplos.h"
#include "store/Banco.h"
#include "store/Figuras.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/// A virtual display on a free number; ends with this object, and with this process in any case.
class TelaVirtual
{
public:
    TelaVirtual()
    {
        int cano[2];
        if (pipe(cano) != 0)
            return;
        m_pid = fork();
        if (m_pid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            close(cano[0]);
            const std::string saida = std::to_string(cano[1]);
            execlp("Xvfb", "Xvfb", "-displayfd", saida.c_str(), "-screen", "0", "640x480x24", "-nolisten",
                   "tcp", static_cast<char *>(nullptr));
            _exit(127);
        }
        close(cano[1]);
        // The server writes its number once it takes connections; an end without a number means no server.
        char c = 0;
        while (read(cano[0], &c, 1) == 1 && c != '\n')
            m_numero += c;
        close(cano[0]);
    }
    ~TelaVirtual()
    {
        if (m_pid <= 0)
            return;
        kill(m_pid, SIGTERM);
        waitpid(m_pid, nullptr, 0);
    }
    TelaVirtual(const TelaVirtual &) = delete;
    TelaVirtual &operator=(const TelaVirtual &) = delete;

    QByteArray Nome() const { return m_numero.isEmpty() ? QByteArray() : ':' + m_numero; }

private:
    pid_t m_pid = -1;
    QByteArray m_numero;
};
} // namespace

class TesteMailEntrega : public QObject
{
    Q_OBJECT

public:
    explicit TesteMailEntrega(bool temTela)
        : m_temTela(temTela)
    {
    }

private slots:
    void oProgramaDeCorreioRecebeOEnderecoDoArquivo();

private:
    bool m_temTela;
};

void TesteMailEntrega::oProgramaDeCorreioRecebeOEnderecoDoArquivo()
{
    if (!m_temTela)
        QSKIP("Xvfb is not installed");
    QTemporaryDir pasta;
    const QString livro = pasta.filePath("Livro da Avó #1");
    QVERIFY(QDir().mkpath(livro));

    const QString recebido = pasta.filePath("recebido");
    QFile abrir(pasta.filePath("xdg-open"));
    QVERIFY(abrir.open(QIODevice::WriteOnly));
    // Written aside and renamed, so that the test never reads half an answer.
    abrir.write("#!/bin/sh\nprintf '%s\\n' \"$@\" >'" + recebido.toUtf8() + ".novo'\nmv '" +
                recebido.toUtf8() + ".novo' '" + recebido.toUtf8() + "'\n");
    abrir.close();
    QVERIFY(abrir.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("PATH", pasta.path().toUtf8() + ':' + qgetenv("PATH"));

    const Banco banco(livro);
    const Figuras figuras(banco);
    AvisosDeTeste avisos;
    TelasDeTeste telas;
    AbridorQt abridor;
    ReceitaNaTela receita;
    receita.txtNome = "Bolo";
    EnvioEmail(banco, figuras, avisos, telas, abridor, "https://www.tamarel.example").imgEmail_Click(receita);

    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(recebido), 20000);
    QFile resposta(recebido);
    QVERIFY(resposta.open(QIODevice::ReadOnly));
    QCOMPARE(resposta.readAll(), QUrl::fromLocalFile(livro + "/~temp.eml").toEncoded() + '\n');
    QVERIFY(QFile::exists(livro + "/~temp.eml"));
    QVERIFY(avisos.textos.isEmpty());
}

int main(int argc, char **argv)
{
    const TelaVirtual tela;
    if (!tela.Nome().isEmpty()) {
        qputenv("DISPLAY", tela.Nome());
        qputenv("QT_QPA_PLATFORM", "xcb");
        // A desktop of the developer's own would bring its own opener along.
        qunsetenv("XDG_CURRENT_DESKTOP");
        qunsetenv("WAYLAND_DISPLAY");
    }
    const QGuiApplication app(argc, argv);
    TesteMailEntrega teste(!tela.Nome().isEmpty());
    return QTest::qExec(&teste, argc, argv);
}

#include "teste_mail_entrega.moc"
