#include "news/RespostaHttp.h"

#include <cstdio>
#include <cstdlib>

// Any bytes as a server's answer: what is understood does not depend on how the network cuts it, and a body
// that counts as whole is as long as was announced.

namespace
{

struct Resultado {
    QByteArray corpo;
    RespostaHttp::Estado estado;
    int status;
    qint64 tamanho;
};

Resultado Ler(const QByteArray &bytes, qsizetype passo)
{
    RespostaHttp resposta;
    QByteArray corpo;
    for (qsizetype i = 0; i < bytes.size(); i += passo) {
        resposta.Receber(bytes.mid(i, passo));
        corpo += resposta.Tirar(bytes.size());
    }
    resposta.FimDaConexao();
    corpo += resposta.Tirar(bytes.size());
    return {corpo, resposta.EstadoAtual(), resposta.Status(), resposta.Tamanho()};
}

void Exigir(bool verdade, const char *promessa)
{
    if (verdade)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promessa);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *dados, std::size_t tamanho)
{
    const QByteArray bytes(reinterpret_cast<const char *>(dados), static_cast<qsizetype>(tamanho));
    const Resultado inteiro = Ler(bytes, qMax<qsizetype>(1, bytes.size()));
    const Resultado miudo = Ler(bytes, 1);
    using Estado = RespostaHttp::Estado;
    Exigir(inteiro.estado == Estado::Fim || inteiro.estado == Estado::Erro, "an answer ends");
    Exigir(inteiro.estado == miudo.estado && inteiro.status == miudo.status, "the cutting does not matter");
    if (inteiro.estado == Estado::Fim) {
        Exigir(inteiro.corpo == miudo.corpo, "nor does it for the body");
        Exigir(inteiro.tamanho < 0 || inteiro.corpo.size() == inteiro.tamanho, "a whole body is whole");
        Exigir(inteiro.status >= 200, "interim answers are no answers");
    }
    return 0;
}
