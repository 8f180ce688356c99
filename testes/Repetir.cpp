// Gives every file named, or below a folder named, to the fuzz target once: stored inputs as a test. Each name is
// written before its turn, so that the culprit of a crash is known.

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstddef>
#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho);

namespace
{
QStringList ListarArquivos(const QString &nome)
{
    if (!QFileInfo(nome).isDir())
        return {nome};
    QStringList caminhos;
    QDirIterator pasta(nome, QDir::Files, QDirIterator::Subdirectories);
    while (pasta.hasNext())
        caminhos += pasta.next();
    return caminhos;
}
} // namespace

int main(int argc, char **argv)
{
    int arquivos = 0;
    for (int i = 1; i < argc; ++i) {
        for (const QString &caminho : ListarArquivos(QFile::decodeName(argv[i]))) {
            std::fprintf(stderr, "%s\n", qPrintable(caminho));
            QFile arquivo(caminho);
            if (!arquivo.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot be read: %s\n", qPrintable(arquivo.errorString()));
                return 1;
            }
            const QByteArray bytes = arquivo.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
            ++arquivos;
        }
    }
    std::fprintf(stderr, "%d files\n", arquivos);
    return arquivos > 0 ? 0 : 1;
}
