// A Qt plugin that is loaded into a program and notes, in a file, when its window was first painted and, if
// asked, when the recipe list stood there rolled open and painted; then it ends the program.
//
//   QT_QPA_GENERIC_PLUGINS="marcapartida:arquivo=FILE;linhas=N;altura=PIXELS;novidades=0"
//
// Without `linhas` the first paint is the end. Times are nanoseconds of the monotonic clock and processor
// nanoseconds of the process, memory is in kB.
#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QGenericPlugin>
#include <QHash>
#include <QTimer>
#include <QWindow>

#include <ctime>
#include <unistd.h>

namespace
{
qint64 Agora(clockid_t relogio)
{
    timespec tempo = {};
    clock_gettime(relogio, &tempo);
    return qint64(tempo.tv_sec) * 1'000'000'000 + tempo.tv_nsec;
}

/// A line of /proc/self/status, e.g. "VmHWM", in kB.
QByteArray Memoria(const QByteArray &nome)
{
    QFile estado("/proc/self/status");
    if (!estado.open(QIODevice::ReadOnly))
        return "0";
    for (const QByteArray &linha : estado.readAll().split('\n'))
        if (linha.startsWith(nome + ":"))
            return linha.mid(nome.size() + 1).trimmed().split(' ').first();
    return "0";
}

class Marca : public QObject
{
public:
    explicit Marca(const QString &pedido)
    {
        for (const QString &parte : pedido.split(';'))
            m_pedido.insert(parte.section('=', 0, 0), parte.section('=', 1));
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        if (!m_pintada && evento->type() == QEvent::Paint)
            m_houvePintura = true;
        if (!m_pintada && !m_entregando && evento->type() == QEvent::Expose && objeto->isWindowType() &&
            static_cast<QWindow *>(objeto)->isExposed()) {
            if (m_pedido.value("novidades") == "0")
                PararNovidades();
            // A window paints itself within the event that exposes it.
            m_entregando = true;
            objeto->event(evento);
            m_entregando = false;
            if (m_houvePintura)
                Pintada();
            return true;
        }
        if (m_pintada && !m_terminando && evento->type() == QEvent::Paint && ListaPronta()) {
            m_terminando = true;
            QTimer::singleShot(0, this, [this] { Terminar("lista"); });
        }
        return false;
    }

private:
    void Pintada()
    {
        m_pintada = true;
        Notar("pintura");
        if (!m_pedido.contains("linhas"))
            Terminar("fim");
    }

    static QWidget *Procurar(const char *nome)
    {
        const auto widgets = QApplication::allWidgets();
        for (QWidget *widget : widgets)
            if (widget->objectName() == QLatin1String(nome))
                return widget;
        return nullptr;
    }

    static void PararNovidades()
    {
        const auto janelas = QApplication::topLevelWidgets();
        for (const QWidget *janela : janelas)
            for (QTimer *timer : janela->findChildren<QTimer *>("TimerWeb"))
                timer->stop();
    }

    bool ListaPronta()
    {
        if (!m_lista)
            m_lista = qobject_cast<QAbstractItemView *>(Procurar("lstVwReceitas"));
        if (!m_painel)
            m_painel = Procurar("picLstReceitas");
        return m_lista && m_painel && m_painel->isVisible() && m_lista->model() &&
               m_painel->height() >= m_pedido.value("altura").toInt() &&
               m_lista->model()->rowCount() == m_pedido.value("linhas").toInt();
    }

    void Notar(const QByteArray &nome)
    {
        m_notas += nome + "_ns " + QByteArray::number(Agora(CLOCK_MONOTONIC)) + "\n";
        m_notas += nome + "_cpu_ns " + QByteArray::number(Agora(CLOCK_PROCESS_CPUTIME_ID)) + "\n";
    }

    void Terminar(const QByteArray &nome)
    {
        Notar(nome);
        for (const char *campo : {"VmHWM", "VmRSS", "RssAnon"})
            m_notas += QByteArray(campo) + " " + Memoria(campo) + "\n";
        QFile arquivo(m_pedido.value("arquivo"));
        const bool gravado = arquivo.open(QIODevice::WriteOnly) && arquivo.write(m_notas) == m_notas.size();
        arquivo.close();
        _exit(gravado ? 0 : 3);
    }

    QHash<QString, QString> m_pedido;
    QByteArray m_notas;
    QAbstractItemView *m_lista = nullptr;
    QWidget *m_painel = nullptr;
    bool m_houvePintura = false;
    bool m_entregando = false;
    bool m_pintada = false;
    bool m_terminando = false;
};
} // namespace

class MarcaPartida : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "marcapartida.json")
public:
    QObject *create(const QString &, const QString &pedido) override { return new Marca(pedido); }
};

#include "MarcaPartida.moc"
