#include "Comando.h"
#include "Executor.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGenericPlugin>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int kPulsoMs = 10;
constexpr qint64 kPacienciaMs = 30'000;

/// Plays a script from within the program's own event loop, one command each time the program has come to
/// rest: when its loop is about to wait for the user, all handlers of the last command have returned or sit
/// in a dialog.
class Tocador : public QObject
{
public:
    explicit Tocador(const QString &caminho)
    {
        QFile arquivo(caminho);
        if (!arquivo.open(QIODevice::ReadOnly))
            Abandonar(0, caminho + ": não pude ler o roteiro");
        m_comandos = LerRoteiro(QString::fromUtf8(arquivo.readAll()));
        Agendar();
        m_espera.start();
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { m_emRepouso = true; });
    }

private:
    // A timer does not fire again while its own slot still runs, and a command that opens a dialog does not
    // return before the dialog closes: so each pulse is a timer of its own.
    void Agendar() { QTimer::singleShot(kPulsoMs, this, &Tocador::Passo); }

    void Passo()
    {
        if (m_proximo >= m_comandos.size())
            return;
        Agendar();
        if (!m_emRepouso || m_digitando)
            return;
        const Comando comando = m_comandos[m_proximo];
        if (comando.verbo == "fim") {
            std::fflush(stderr);
            std::_Exit(0);
        }
        m_emRepouso = false;
        ++m_proximo; // the command may open a dialog, whose own loop then plays the commands that follow
        // What is typed is typed to its end: a loop that the program runs meanwhile, waiting for the web say, must
        // not let the next command come between two letters.
        m_digitando = comando.verbo.startsWith("digite") || comando.verbo == "cole";
        QString motivo;
        const Executor::Resultado resultado = m_executor.Executar(comando, motivo);
        m_digitando = false;
        if (resultado == Executor::Resultado::Feito) {
            m_espera.restart();
            return;
        }
        --m_proximo;
        if (resultado == Executor::Resultado::Falhou || m_espera.elapsed() > kPacienciaMs)
            Abandonar(comando.linha, comando.verbo + ' ' + comando.argumentos.join(' ') + ": " + motivo);
    }

    [[noreturn]] static void Abandonar(int linha, const QString &motivo)
    {
        std::fprintf(stderr, "roteiro, linha %d: %s\n", linha, motivo.toUtf8().constData());
        std::fflush(stderr);
        std::_Exit(3);
    }

    QList<Comando> m_comandos;
    qsizetype m_proximo = 0;
    bool m_emRepouso = false;
    bool m_digitando = false;
    QElapsedTimer m_espera;
    Executor m_executor;
};

class RoteiroPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "roteiro.json")
public:
    QObject *create(const QString &, const QString &caminho) override
    {
        // The plugin is made before the first window; the script begins with the first event loop.
        auto *dono = new QObject;
        QTimer::singleShot(0, dono, [caminho, dono] { (new Tocador(caminho))->setParent(dono); });
        return dono;
    }
};
} // namespace

#include "Roteiro.moc"
