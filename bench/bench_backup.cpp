// A whole backup of a book with 500 pictures of 200 MB together, beside one bare compress2 call over the same
// archive in the same run: time as a ratio, and the peak memory of a process that does nothing else.
#include "backup/tests/Duplos.h"
#include "packages/Recipiente.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <ctime>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

namespace
{
constexpr int kFiguras = 500;
constexpr qsizetype kTamanhoDaFigura = 400'000;
const char *programa = nullptr;

/// Processor time of this process: what others on the machine take does not show in it.
double Processador()
{
    timespec tempo = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &tempo);
    return static_cast<double>(tempo.tv_sec) + static_cast<double>(tempo.tv_nsec) / 1e9;
}

/// Photographs do not pack: every byte is left to chance.
void EncherLivro(Cozinha &cozinha)
{
    QRandomGenerator gerador(2005);
    QByteArray figura(kTamanhoDaFigura, Qt::Uninitialized);
    for (int i = 1; i <= kFiguras; ++i) {
        gerador.fillRange(reinterpret_cast<quint32 *>(figura.data()), figura.size() / 4);
        cozinha.NovaReceita("Receita " + QString::number(i), figura);
    }
}

/// Peak resident memory, in bytes, of this program run again with these arguments; 0 when it fails.
double PicoDe(const QList<QByteArray> &argumentos)
{
    const pid_t filho = fork();
    if (filho == 0) {
        QList<char *> argv = {const_cast<char *>(programa)};
        for (const QByteArray &argumento : argumentos)
            argv << const_cast<char *>(argumento.constData());
        argv << nullptr;
        execv("/proc/self/exe", argv.data());
        _exit(127);
    }
    int estado = 0;
    rusage uso = {};
    wait4(filho, &estado, 0, &uso);
    return WIFEXITED(estado) && WEXITSTATUS(estado) == 0 ? static_cast<double>(uso.ru_maxrss) * 1024 : 0;
}

void BackupDeDuzentosMegabytes(benchmark::State &estado)
{
    QTemporaryDir pasta;
    QDir(pasta.path()).mkdir("livro");
    const QString destino = pasta.filePath("a.bck");
    double soma = 0;
    double nua = 0;
    double somaProcessador = 0;
    double nuaProcessador = 0;
    {
        Cozinha cozinha(pasta.filePath("livro"));
        EncherLivro(cozinha);
    }
    const QByteArray livro = QFile::encodeName(pasta.filePath("livro"));
    const double vazio = PicoDe({"--nada"});
    const double picoBackup = PicoDe({"--backup", livro, QFile::encodeName(destino)});
    const double picoRestauracao = PicoDe({"--restaurar", livro, QFile::encodeName(destino)});

    Cozinha cozinha(pasta.filePath("livro"));
    QByteArray arquivo;
    if (Recipiente::Descompactar(Conteudo(destino), arquivo) != Recipiente::kSucesso ||
        picoRestauracao == 0) {
        estado.SkipWithError("the backup failed");
        return;
    }
    arquivo.chop(1);
    for (auto _ : estado) {
        QElapsedTimer relogio;
        relogio.start();
        double antes = Processador();
        {
            QByteArray saida(arquivo.size() + arquivo.size() / 1000 + 16, Qt::Uninitialized);
            auto tamanho = static_cast<uLongf>(saida.size());
            compress2(reinterpret_cast<Bytef *>(saida.data()), &tamanho,
                      reinterpret_cast<const Bytef *>(arquivo.constData()),
                      static_cast<uLong>(arquivo.size()), 9);
        }
        nua += static_cast<double>(relogio.nsecsElapsed()) / 1e9;
        nuaProcessador += Processador() - antes;
        antes = Processador();
        relogio.restart();
        cozinha.Backup(destino);
        const double segundos = static_cast<double>(relogio.nsecsElapsed()) / 1e9;
        soma += segundos;
        somaProcessador += Processador() - antes;
        estado.SetIterationTime(segundos);
    }
    const auto bytes = static_cast<double>(arquivo.size());
    estado.counters["archive_MB"] = bytes / 1e6;
    estado.counters["compress2_s"] = nua / static_cast<double>(estado.iterations());
    estado.counters["time_ratio"] = soma / nua;
    estado.counters["cpu_ratio"] = somaProcessador / nuaProcessador;
    estado.counters["peak_backup_MB"] = picoBackup / 1e6;
    estado.counters["peak_backup_ratio"] = picoBackup / bytes;
    estado.counters["peak_restore_MB"] = picoRestauracao / 1e6;
    estado.counters["peak_idle_MB"] = vazio / 1e6;
}
BENCHMARK(BackupDeDuzentosMegabytes)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(3);
} // namespace

int main(int argc, char **argv)
{
    programa = argv[0];
    const QCoreApplication app(argc, argv);
    const QStringList argumentos = app.arguments();
    if (argumentos.value(1) == "--nada")
        return 0;
    if (argumentos.value(1) == "--backup" || argumentos.value(1) == "--restaurar") {
        Cozinha cozinha(argumentos.value(2));
        const bool backup = argumentos[1] == "--backup";
        backup ? cozinha.Backup(argumentos.value(3)) : cozinha.Restaurar(argumentos.value(3));
        return cozinha.avisos.icones == QList({Avisos::Icone::Nenhum}) ? 0 : 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
