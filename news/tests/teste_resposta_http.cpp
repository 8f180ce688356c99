#include "news/RespostaHttp.h"

#include <QTest>

using Estado = RespostaHttp::Estado;

namespace
{

/// The body of an answer that arrives in pieces of `passo` bytes; "-" when it does not arrive whole.
QByteArray Corpo(const QByteArray &bytes, int passo, bool fecha)
{
    RespostaHttp resposta;
    QByteArray corpo;
    for (qsizetype i = 0; i < bytes.size(); i += passo) {
        resposta.Receber(bytes.mid(i, passo));
        corpo += resposta.Tirar(1'000'000);
    }
    if (fecha)
        resposta.FimDaConexao();
    corpo += resposta.Tirar(1'000'000);
    return resposta.EstadoAtual() == Estado::Fim ? corpo : QByteArray("-");
}

} // namespace

class TesteRespostaHttp : public QObject
{
    Q_OBJECT

private slots:
    void soOQueChegouInteiroConta_data();
    void soOQueChegouInteiroConta();
    void dizStatusECampos();
    void tiraAosPoucos();
    void aCabecaTemLimite();
};

void TesteRespostaHttp::soOQueChegouInteiroConta_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("fecha");
    QTest::addColumn<QByteArray>("corpo");
    const auto linha = [](const char *nome, const QByteArray &bytes, bool fecha, const char *corpo) {
        QTest::newRow(nome) << bytes << fecha << QByteArray(corpo);
    };
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray trecos = ok + "Transfer-Encoding: chunked\r\n\r\n";
    linha("com tamanho", ok + "Content-Length: 3\r\n\r\nabc", false, "abc");
    linha("com tamanho e mais", ok + "Content-Length: 3\r\n\r\nabcdef", false, "abc");
    linha("cortado", ok + "Content-Length: 4\r\n\r\nabc", true, "-");
    linha("cortado e aberto", ok + "Content-Length: 4\r\n\r\nabc", false, "-");
    linha("vazio", ok + "Content-Length: 0\r\n\r\n", false, "");
    linha("ate fechar", ok + "\r\nabc", true, "abc");
    linha("ate fechar, aberto", ok + "\r\nabc", false, "-");
    linha("http 1.0", "HTTP/1.0 200 OK\r\n\r\nabc", true, "abc");
    linha("linhas so com lf", "HTTP/1.1 200 OK\nContent-Length: 3\n\nabc", false, "abc");
    linha("nomes em qualquer caixa", ok + "CONTENT-length:3\r\n\r\nabc", false, "abc");
    linha("tamanho repetido igual", ok + "Content-Length: 3\r\nContent-Length: 3\r\n\r\nabc", false, "abc");
    linha("tamanhos diferentes", ok + "Content-Length: 3\r\nContent-Length: 2\r\n\r\nabc", true, "-");
    linha("tamanho negativo", ok + "Content-Length: -3\r\n\r\nabc", true, "-");
    linha("tamanho sem numero", ok + "Content-Length: abc\r\n\r\nabc", true, "-");
    linha("tamanho vazio", ok + "Content-Length:\r\n\r\nabc", true, "-");
    linha("tamanho que transborda", ok + "Content-Length: 99999999999999999999\r\n\r\nabc", true, "-");
    linha("trecos", trecos + "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n", false, "abcde");
    linha("trecos com extensao e fim", trecos + "3;x=y\r\nabc\r\n0\r\nCampo: x\r\n\r\n", false, "abc");
    linha("trecos em hexadecimal", trecos + "00A\r\n0123456789\r\n0\r\n\r\n", false, "0123456789");
    linha("trecos mandam no tamanho",
          ok + "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n0\r\n\r\n", false, "ab");
    linha("trecos sem o ultimo", trecos + "3\r\nabc\r\n", true, "-");
    linha("trecos cortados no dado", trecos + "3\r\nab", true, "-");
    linha("trecos cortados no fim", trecos + "3\r\nabc\r\n0\r\n", true, "-");
    linha("treco maior que diz", trecos + "2\r\nabc\r\n0\r\n\r\n", true, "-");
    linha("treco negativo", trecos + "-1\r\nabc\r\n0\r\n\r\n", true, "-");
    linha("treco enorme", trecos + "fffffffff\r\nabc", true, "-");
    linha("treco sem numero", trecos + "\r\nabc\r\n0\r\n\r\n", true, "-");
    linha("codificado", ok + "Content-Encoding: gzip\r\nContent-Length: 3\r\n\r\nabc", true, "-");
    linha("identidade", ok + "Content-Encoding: identity\r\nContent-Length: 3\r\n\r\nabc", true, "abc");
    linha("outra transferencia", ok + "Transfer-Encoding: gzip, chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n", true,
          "-");
    linha("provisoria antes", "HTTP/1.1 103 Early\r\nLink: x\r\n\r\n" + ok + "Content-Length: 3\r\n\r\nabc",
          false, "abc");
    linha("so provisoria", "HTTP/1.1 100 Continue\r\n\r\n", true, "-");
    linha("nada", "", true, "-");
    linha("nao fala http", "SSH-2.0-x\r\n\r\n", true, "-");
    linha("http 2", "HTTP/2 200\r\n\r\nabc", true, "-");
    linha("sem status", "HTTP/1.1 abc\r\n\r\nabc", true, "-");
    linha("status curto", "HTTP/1.1 20\r\n\r\nabc", true, "-");
    linha("campo sem dois pontos", ok + "xyz\r\n\r\nabc", true, "-");
    linha("cabeca cortada", ok + "Content-Len", true, "-");
}

void TesteRespostaHttp::soOQueChegouInteiroConta()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, fecha);
    // However the network cuts it.
    for (const int passo : {1, 2, 3, 7, 1000}) {
        const QByteArray lido = Corpo(bytes, passo, fecha);
        QTEST(lido, "corpo");
    }
}

void TesteRespostaHttp::dizStatusECampos()
{
    RespostaHttp resposta;
    resposta.Receber("HTTP/1.1 302 Found\r\nLocation:  /x y \r\n");
    QCOMPARE(resposta.Status(), 0);
    resposta.Receber("Content-Length: 7\r\n\r\n");
    QCOMPARE(resposta.Status(), 302);
    QCOMPARE(resposta.Campo("location"), "/x y");
    QCOMPARE(resposta.Campo("outro"), "");
    QCOMPARE(resposta.Tamanho(), 7);
    QCOMPARE(resposta.EstadoAtual(), Estado::Corpo);
}

void TesteRespostaHttp::tiraAosPoucos()
{
    RespostaHttp resposta;
    resposta.Receber("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nabcde");
    QCOMPARE(resposta.Prontos(), 5);
    QCOMPARE(resposta.Tirar(2), "ab");
    QCOMPARE(resposta.Tirar(2), "cd");
    QCOMPARE(resposta.Tirar(2), "e");
    QCOMPARE(resposta.Tirar(2), "");
}

void TesteRespostaHttp::aCabecaTemLimite()
{
    for (const QByteArray &bloco : {QByteArray(1000, 'x'), QByteArray("Campo: x\r\n").repeated(100)}) {
        RespostaHttp resposta;
        resposta.Receber("HTTP/1.1 200 OK\r\n");
        int blocos = 0;
        while (resposta.EstadoAtual() == Estado::Cabeca && ++blocos < 1000)
            resposta.Receber(bloco);
        QCOMPARE(resposta.EstadoAtual(), Estado::Erro);
        QVERIFY(blocos < 100);
    }
}

QTEST_GUILESS_MAIN(TesteRespostaHttp)
#include "teste_resposta_http.moc"
