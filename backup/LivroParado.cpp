#include "backup/LivroParado.h"

#include "store/Banco.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace
{
constexpr qint64 kCabecalho = 100;
}

LivroParado::LivroParado(const Banco &banco)
    : m_livro(QFileInfo(banco.CaminhoDoLivro()).canonicalFilePath())
    , m_antes(Ver())
{
}

bool LivroParado::Continua(bool eLivro) const
{
    // A journal lies beside the file while a change is being written, and only then.
    return Ver() == m_antes && !(eLivro && QFileInfo::exists(m_livro + "-journal"));
}

LivroParado::Estado LivroParado::Ver() const
{
    Estado estado;
    struct stat dados = {};
    QFile arquivo(m_livro);
    if (stat(QFile::encodeName(m_livro).constData(), &dados) != 0 || !arquivo.open(QIODevice::ReadOnly))
        return estado;
    estado.numero = dados.st_ino;
    estado.tamanho = dados.st_size;
    estado.segundos = dados.st_mtim.tv_sec;
    estado.nanossegundos = dados.st_mtim.tv_nsec;
    estado.cabecalho = arquivo.read(kCabecalho);
    return estado;
}
