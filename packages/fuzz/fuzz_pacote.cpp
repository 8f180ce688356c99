// What the readers of foreign bytes must survive: the container, the package text and base64, all fed with
// the same input. Built for libFuzzer, or with Repetir.cpp as a plain program that runs each file once.

#include "packages/Base64Class.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"
#include "packages/TextoDoPacote.h"

#include <QBuffer>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace
{
constexpr qint64 kMaximo = 4 * 1024 * 1024;

void Exigir(bool promessa)
{
    if (!promessa)
        std::abort();
}

void LerPacote(const QByteArray &bytes)
{
    QBuffer arquivo;
    arquivo.setData(bytes);
    arquivo.open(QIODevice::ReadOnly);
    Pacote::Texto pacote;
    if (pacote.Abrir(arquivo) != Pacote::Texto::Abertura::Aberto) {
        Exigir(!bytes.startsWith(Pacote::EscreverCabecalho() + "<RECEITA>") ||
               bytes.count("<RECEITA>") > Pacote::kMaisReceitas);
        return;
    }
    for (qsizetype i = 0; i < std::min<qsizetype>(pacote.Quantas(), 100); ++i) {
        const Pacote::Registro registro = pacote[i];
        Exigir(registro.Tudo().size() <= 2 * bytes.size() + 2);
        for (const QStringView tag : {QStringView(u"NOME"), QStringView(u"TIPO"), QStringView(u"FIGURA")})
            Exigir(registro.Valor(tag).size() <= registro.Tudo().size());
        Exigir(registro.Valor(u"NOME").startsWith(pacote.Nome(i, 20)));
        Pacote::DesfazerVirgulas(Pacote::DesfazerQuebras(registro.Valor(u"MODO")));
        qsizetype figura = 0;
        Pacote::LeitorDaFigura leitor = registro.AbrirFigura();
        for (QByteArray bloco = leitor.LerBloco(); !bloco.isEmpty(); bloco = leitor.LerBloco())
            figura += bloco.size();
        Exigir(figura <= bytes.size());
        registro.Excesso();
        for (const Pacote::Registro &item : registro.Itens())
            Exigir(item.Valor(u"INGREDIENTE").size() <= registro.Tudo().size());
    }
}

void LerRecipiente(const QByteArray &bytes)
{
    QByteArray saida;
    const int erro = Recipiente::Descompactar(bytes, saida, kMaximo);
    Exigir(saida.size() <= kMaximo + 1);
    if (erro != Recipiente::kSucesso) {
        Exigir(saida.isEmpty());
        return;
    }
    Exigir(bytes.isEmpty() || saida.endsWith('\0'));
    LerPacote(saida);
}

void IrEVoltar(const QByteArray &bytes)
{
    const Base64Class base64;
    const QByteArray texto = base64.Codificar(bytes);
    Exigir(base64.Decodificar(texto) == bytes);
    Exigir(base64.Decodificar(bytes).size() <= bytes.size());

    QByteArray recipiente;
    QByteArray volta;
    Exigir(Recipiente::Compactar(bytes, recipiente, 1) == Recipiente::kSucesso);
    Exigir(Recipiente::Descompactar(recipiente, volta) == Recipiente::kSucesso);
    Exigir(volta == bytes + '\0');
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    const QByteArray bytes(reinterpret_cast<const char *>(dados), static_cast<qsizetype>(tamanho));
    LerRecipiente(bytes);
    LerPacote(bytes);
    if (!bytes.isEmpty())
        IrEVoltar(bytes);
    return 0;
}
