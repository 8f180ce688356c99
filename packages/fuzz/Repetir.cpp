// Runs every file of the folders named on the command line once through the fuzz target's entry.

#include <QDirIterator>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho);

int main(int argc, char **argv)
{
    int arquivos = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator pasta(QString::fromLocal8Bit(argv[i]), QDir::Files);
        while (pasta.hasNext()) {
            QFile arquivo(pasta.next());
            if (!arquivo.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(arquivo.fileName()));
                return 1;
            }
            std::fprintf(stderr, "%s\n", qPrintable(arquivo.fileName())); // names the culprit of a crash
            const QByteArray bytes = arquivo.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
            ++arquivos;
        }
    }
    std::fprintf(stderr, "%d files\n", arquivos);
    return arquivos > 0 ? 0 : 1;
}
