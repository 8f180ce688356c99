#include "store/access/ArquivoJet.h"

#include "store/access/ErroAccess.h"
#include "store/access/Rc4.h"
#include "store/access/Trecho.h"

#include <QIODevice>
#include <QtEndian>

#include <cstring>

using namespace Access;

namespace
{
constexpr qint64 kVersao = 0x14;
constexpr qint64 kMascarado = 0x18;
constexpr qint64 kPaginaDeCodigo = 0x3C;
constexpr qint64 kChave = 0x3E;
constexpr qint64 kMenosPaginas = 3;
constexpr QByteArrayView kChaveDoCabecalho("\xC7\xDA\x39\x6B", 4);
} // namespace

ArquivoJet::ArquivoJet(QIODevice &arquivo)
    : m_arquivo(arquivo)
    , m_tamanho(arquivo.size())
{
    LerCabecalho();
}

QByteArray ArquivoJet::LerDoArquivo(qint64 lugar, qint64 tamanho) const
{
    QByteArray bytes(tamanho, Qt::Uninitialized);
    if (!m_arquivo.seek(lugar))
        throw ErroAccess("O arquivo não pôde ser lido: " + m_arquivo.errorString());
    const qint64 lidos = m_arquivo.read(bytes.data(), tamanho);
    if (lidos < 0)
        throw ErroAccess("O arquivo não pôde ser lido: " + m_arquivo.errorString());
    if (lidos < tamanho)
        Danificado("faltam bytes no fim");
    return bytes;
}

void ArquivoJet::LerCabecalho()
{
    constexpr QByteArrayView kJet("\0\1\0\0Standard Jet DB\0", 20);
    constexpr QByteArrayView kAce("\0\1\0\0Standard ACE DB\0", 20);
    constexpr qint64 kCabecalho = 0x98; // the fields end there in both formats
    if (m_tamanho < kCabecalho)
        Danificado("só há o começo do cabeçalho");
    const QByteArray bytes = LerDoArquivo(0, kCabecalho);
    const Trecho cabecalho{bytes};
    const QByteArrayView assinatura = cabecalho.Parte(0, kJet.size()).Bytes();
    if (assinatura != kJet && assinatura != kAce)
        throw ErroAccess("O arquivo não é um banco de dados do Access.");
    const quint8 versao = cabecalho.U8(kVersao);
    if (assinatura == kAce || versao > 1)
        throw ErroAccess("O arquivo é de uma versão do Access mais nova do que a 2003. "
                   "Só são lidos arquivos do Access 97, 2000, 2002 e 2003.");
    m_formato = versao == 0 ? &kJet3 : &kJet4;

    m_paginas = m_tamanho / m_formato->pagina;
    if (m_paginas < kMenosPaginas)
        Danificado("só há o cabeçalho");
    if (m_tamanho > m_formato->maiorArquivo)
        Danificado("é maior do que um arquivo do Access pode ser");

    QByteArray claro(kMascarado, '\0');
    claro += Rc4(kChaveDoCabecalho, cabecalho.Parte(kMascarado, m_formato->mascarado).Bytes());
    const Trecho campos{claro};
    m_chave = campos.U32(kChave);
    const quint16 paginaDeCodigo = campos.U16(kPaginaDeCodigo);
    if (m_formato->jet == 3 && paginaDeCodigo != 1252)
        throw ErroAccess(QString("O arquivo usa a página de código %1; só a 1252 é lida.").arg(paginaDeCodigo));

    // The catalogue's definition stands on page 2 of every file, so it tells whether the key fits.
    if (m_chave != 0 && static_cast<quint8>(Pagina(2)[0]) != static_cast<quint8>(TipoDePagina::Definicao))
        throw ErroAccess("O arquivo está codificado (protegido) de um modo que não pode ser lido. "
                   "Retire a codificação no Access e tente de novo.");
}

QByteArray ArquivoJet::Pagina(qint64 n) const
{
    if (n < 1 || n >= m_paginas)
        Danificado(QString("a página %1 não existe").arg(n));
    Guardada &guardada = m_guardadas[static_cast<std::size_t>(n) % m_guardadas.size()];
    if (guardada.numero == n)
        return guardada.bytes;
    QByteArray bytes = LerDoArquivo(n * m_formato->pagina, m_formato->pagina);
    if (m_chave != 0) {
        // Each page has a stream of its own.
        std::array<char, 4> chave{};
        qToLittleEndian<quint32>(m_chave ^ static_cast<quint32>(n), chave.data());
        bytes = Rc4(QByteArrayView(chave.data(), chave.size()), bytes);
    }
    guardada = {n, bytes};
    return bytes;
}

QByteArray ArquivoJet::Pagina(qint64 n, TipoDePagina tipo) const
{
    QByteArray bytes = Pagina(n);
    if (static_cast<quint8>(bytes[0]) != static_cast<quint8>(tipo))
        Danificado(QString("a página %1 não é do tipo esperado").arg(n));
    return bytes;
}
