// Runs the fuzz target once over every file named or below a folder named: the stored inputs as a test.

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstddef>
#include <cstdint>
#include <iostream>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho);

int main(int argc, char **argv)
{
    int arquivos = 0;
    for (int i = 1; i < argc; ++i) {
        const QString nome = QFile::decodeName(argv[i]);
        QStringList caminhos;
        if (QFileInfo(nome).isDir()) {
            QDirIterator pasta(nome, QDir::Files, QDirIterator::Subdirectories);
            while (pasta.hasNext())
                caminhos += pasta.next();
        } else {
            caminhos += nome;
        }
        for (const QString &caminho : caminhos) {
            QFile arquivo(caminho);
            if (!arquivo.open(QIODevice::ReadOnly)) {
                std::cerr << qPrintable(caminho) << ": " << qPrintable(arquivo.errorString()) << '\n';
                return 1;
            }
            const QByteArray bytes = arquivo.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
            ++arquivos;
        }
    }
    std::cout << arquivos << " arquivos\n";
    return arquivos > 0 ? 0 : 1;
}
