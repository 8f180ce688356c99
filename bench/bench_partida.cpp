// bench_partida [--vezes N] [--livros 0,1000,20000]: starts the real program and a bare window of the same
// size in turns, each as a process of its own, and prints what they took as JSON: from the fork to the first
// painted window, from the fork to the painted, rolled-open list, and the memory at that moment.
//
// The platform comes from the environment (QT_QPA_PLATFORM, DISPLAY). A window manager should run: without
// one nothing activates the window, and the list waits 0.3 s for that.
#include "bench/GeradorLivro.h"
#include "bench/MotorNu.h"
#include "bench/Tempo.h"
#include "browse/LinhasLista.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{
// The rolled-open list: 6540 twips, reached in steps of 200 from 20 on, one each 8 ms.
constexpr int kAlturaDaLista = 436;
constexpr double kRolagemMs = 8.0 * ((6540 - 20) / 200 + 1);

/// What the plugin noted, times in milliseconds from the fork.
using Notas = QMap<QByteArray, double>;

Notas Partir(const QString &programa, const QString &pasta, const QString &pedido)
{
    const QString arquivo = pasta + "/marca";
    QFile::remove(arquivo);
    const QByteArray caminho = QFile::encodeName(programa);
    const QByteArray plugin = QFile::encodeName("marcapartida:arquivo=" + arquivo + pedido);
    const QByteArray casa = QFile::encodeName(pasta);

    const double inicio = 1000 * Segundos(Contagem::Parede);
    const pid_t filho = fork();
    if (filho == 0) {
        setenv("QT_QPA_GENERIC_PLUGINS", plugin.constData(), 1);
        setenv("QT_PLUGIN_PATH", PASTA_MARCA, 1);
        setenv("HOME", casa.constData(), 1);
        setenv("XDG_RUNTIME_DIR", casa.constData(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        execl(caminho.constData(), caminho.constData(), nullptr);
        _exit(127);
    }
    int estado = 0;
    waitpid(filho, &estado, 0);
    QFile marca(arquivo);
    if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0 || !marca.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(programa + " did not come to the first paint"));
    Notas notas;
    for (const QByteArray &linha : marca.readAll().split('\n')) {
        const auto partes = linha.split(' ');
        if (partes.size() != 2)
            continue;
        double valor = partes[1].toDouble();
        if (partes[0].endsWith("_ns"))
            valor /= 1e6;
        if (partes[0].endsWith("_ns") && !partes[0].endsWith("_cpu_ns"))
            valor -= inicio;
        notas.insert(partes[0], valor);
    }
    return notas;
}

/// Runs several kinds of start in turns and keeps every note of each.
class Rodadas
{
public:
    using Partida = std::function<Notas()>;
    Rodadas(const std::vector<Partida> &partidas, int vezes)
        : m_notas(partidas.size())
    {
        for (int vez = -1; vez < vezes; ++vez) // the first round warms the caches
            for (std::size_t i = 0; i < partidas.size(); ++i)
                if (const Notas notas = partidas[i](); vez >= 0)
                    m_notas[i].push_back(notas);
    }
    double Mediana(std::size_t partida, const char *nota) const
    {
        std::vector<double> valores;
        for (const Notas &notas : m_notas[partida])
            valores.push_back(notas.value(nota));
        return ::Mediana(valores);
    }

private:
    std::vector<std::vector<Notas>> m_notas;
};

void Acrescentar(QJsonArray &tabela, const QString &trabalho, double nosso, double nu, const char *unidade)
{
    tabela.append(QJsonObject{{"name", trabalho}, {"nosso", nosso}, {"nu", nu}, {"unidade", unidade}});
}

/// The columns that the list shows, in its order, by the bare engine with the best index; milliseconds.
double BuscaNua(const QString &livro)
{
    const QString copia = livro + ".indexado";
    if (!QFile::copy(livro, copia))
        throw std::runtime_error("the book cannot be copied");
    MotorNu(copia, MotorNu::Modo::Gravar).Executar("CREATE INDEX PorNome ON Receitas(Nome)");
    std::vector<double> tempos;
    for (int vez = 0; vez < 5; ++vez) {
        const double inicio = Segundos(Contagem::Parede);
        MotorNu(copia, MotorNu::Modo::Ler)
            .Percorrer("Select " + LinhasLista::CamposLidos().join(",").toStdString() +
                       " from Receitas Order By Nome");
        tempos.push_back(1000 * (Segundos(Contagem::Parede) - inicio));
    }
    QFile::remove(copia);
    return Mediana(tempos);
}

void Medir(QJsonArray &tabela, const QString &programas, int receitas, int vezes)
{
    const QTemporaryDir pasta;
    const QString programa = pasta.filePath("cozinhario");
    if (!QFile::copy(programas + "/cozinhario", programa))
        throw std::runtime_error("the program cannot be copied");
    GerarLivro(pasta.path(), receitas);

    const QString lista = QString(";linhas=%1;altura=%2").arg(receitas).arg(kAlturaDaLista);
    const Rodadas rodadas({[&] { return Partir(programas + "/janela_nua", pasta.path(), {}); },
                           [&] { return Partir(programa, pasta.path(), {}); },
                           [&] { return Partir(programa, pasta.path(), ";novidades=0"); },
                           [&] { return Partir(programa, pasta.path(), lista); },
                           [&] { return Partir(programa, pasta.path(), lista + ";novidades=0"); }},
                          vezes);
    enum { Nua, Pintura, PinturaSemNovidades, Lista, ListaSemNovidades };

    const QString livro = QString("/%1").arg(receitas);
    const double nua = rodadas.Mediana(Nua, "pintura_ns");
    const double lista0 = nua + kRolagemMs + BuscaNua(pasta.filePath("dadosr.lst"));
    Acrescentar(tabela, "PrimeiraPintura" + livro, rodadas.Mediana(Pintura, "pintura_ns"), nua, "ms");
    Acrescentar(tabela, "PrimeiraPinturaProcessador" + livro, rodadas.Mediana(Pintura, "pintura_cpu_ns"),
                rodadas.Mediana(Nua, "pintura_cpu_ns"), "ms");
    Acrescentar(tabela, "PrimeiraPinturaComESemNovidades" + livro, rodadas.Mediana(Pintura, "pintura_cpu_ns"),
                rodadas.Mediana(PinturaSemNovidades, "pintura_cpu_ns"), "ms");
    Acrescentar(tabela, "ListaAberta" + livro, rodadas.Mediana(Lista, "lista_ns"), lista0, "ms");
    Acrescentar(tabela, "ListaAbertaComESemNovidades" + livro, rodadas.Mediana(Lista, "lista_ns"),
                rodadas.Mediana(ListaSemNovidades, "lista_ns"), "ms");
    Acrescentar(tabela, "MemoriaMaxima" + livro, rodadas.Mediana(Lista, "VmHWM") / 1024,
                rodadas.Mediana(Nua, "VmHWM") / 1024, "MB");
    Acrescentar(tabela, "Memoria" + livro, rodadas.Mediana(Lista, "VmRSS") / 1024,
                rodadas.Mediana(Nua, "VmRSS") / 1024, "MB");
}
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication aplicacao(argc, argv);
    const QStringList pedidos = QCoreApplication::arguments();
    const auto pedido = [&pedidos](const char *nome, const QString &padrao) {
        const auto lugar = pedidos.indexOf(nome);
        return lugar > 0 && lugar + 1 < pedidos.size() ? pedidos[lugar + 1] : padrao;
    };
    try {
        QJsonArray tabela;
        for (const QString &livro : pedido("--livros", "0,1000,20000").split(','))
            Medir(tabela, QCoreApplication::applicationDirPath(), livro.toInt(),
                  pedido("--vezes", "11").toInt());
        std::puts(QJsonDocument(QJsonObject{{"partidas", tabela}}).toJson().constData());
    } catch (const std::exception &erro) {
        std::fprintf(stderr, "bench_partida: %s\n", erro.what());
        return 1;
    }
    return 0;
}
