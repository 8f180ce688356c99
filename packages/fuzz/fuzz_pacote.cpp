// What the readers of foreign bytes must survive: the container, the package text and base64, all fed with
// the same input. Built for libFuzzer, or with Repetir.cpp as a plain program that runs each file once.

#include "packages/Base64Class.h"
#include "packages/Pacote.h"
#include "packages/Recipiente.h"

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
    const QString texto = Pacote::LerTexto(arquivo);
    Exigir(texto.isEmpty() || texto.endsWith("\r\n"));
    Exigir(texto.size() <= 2 * bytes.size() + 2);

    const std::optional<Pacote::Texto> pacote = Pacote::Texto::Dividir(texto);
    Exigir(pacote || !texto.startsWith(Pacote::Cabecalho() + "\r\n<RECEITA>"));
    for (qsizetype i = 0; pacote && i < std::min<qsizetype>(pacote->Quantas(), 100); ++i) {
        const Pacote::Registro &registro = (*pacote)[i];
        for (const QStringView tag : {QStringView(u"NOME"), QStringView(u"TIPO"), QStringView(u"FIGURA")})
            Exigir(registro.Valor(tag).size() <= texto.size());
        Pacote::DesfazerVirgulas(Pacote::DesfazerQuebras(registro.Valor(u"MODO")));
        Exigir(registro.DadosFigura().size() <= registro.Valor(u"DADOS_FIGURA").size());
        for (const Pacote::Registro &item : registro.Itens())
            Exigir(item.Valor(u"INGREDIENTE").size() <= texto.size());
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
