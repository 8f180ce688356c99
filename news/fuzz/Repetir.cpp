#include <QByteArray>
#include <QDirIterator>
#include <QFile>

#include <cstdio>

// Runs each file of the folders given through the fuzz target, once: the ordinary test of what the fuzzer
// found or began with.

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *dados, std::size_t tamanho);

int main(int argc, char **argv)
{
    int arquivos = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator pasta(QString::fromLocal8Bit(argv[i]), QDir::Files, QDirIterator::Subdirectories);
        while (pasta.hasNext()) {
            QFile arquivo(pasta.next());
            if (!arquivo.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(arquivo.fileName()));
                return 1;
            }
            const QByteArray bytes = arquivo.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
            ++arquivos;
        }
    }
    std::printf("%d files\n", arquivos);
    return arquivos > 0 ? 0 : 1;
}
