#include "news/RespostaHttp.h"

namespace
{
constexpr qsizetype kMaximoCabeca = 64 * 1024;

bool SoDigitos(const QByteArray &texto)
{
    if (texto.isEmpty() || texto.size() > 15)
        return false;
    for (const char c : texto) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}
} // namespace

void RespostaHttp::Receber(QByteArrayView bytes)
{
    if (m_estado == Estado::Fim || m_estado == Estado::Erro)
        return; // what follows the body is nobody's
    m_chegados.append(bytes.data(), bytes.size());
    if (m_estado == Estado::Cabeca)
        LerCabeca();
    if (m_estado == Estado::Corpo)
        LerCorpo();
}

void RespostaHttp::FimDaConexao()
{
    if (m_estado == Estado::Corpo && !m_emTrecos && m_tamanho < 0)
        m_estado = Estado::Fim;
    else if (m_estado != Estado::Fim)
        Falhar();
}

QByteArray RespostaHttp::Tirar(qsizetype maximo)
{
    const QByteArray pedaco = m_corpo.left(maximo);
    m_corpo.remove(0, pedaco.size());
    return pedaco;
}

/// The next line without its end; false when it has not arrived whole.
bool RespostaHttp::Linha(QByteArray &linha)
{
    const qsizetype fim = m_chegados.indexOf('\n');
    m_lidosDaCabeca += fim < 0 ? 0 : fim + 1;
    if (m_lidosDaCabeca + (fim < 0 ? m_chegados.size() : 0) > kMaximoCabeca) {
        Falhar();
        return false;
    }
    if (fim < 0)
        return false;
    linha = m_chegados.left(fim);
    if (linha.endsWith('\r'))
        linha.chop(1);
    m_chegados.remove(0, fim + 1);
    return true;
}

void RespostaHttp::LerCabeca()
{
    QByteArray linha;
    while (m_estado == Estado::Cabeca && Linha(linha)) {
        if (m_statusLido == 0) {
            const QByteArray codigo = linha.mid(9, 3);
            if (!linha.startsWith("HTTP/1.") || linha.size() < 12 || linha[8] != ' ' || !SoDigitos(codigo) ||
                codigo.toInt() < 100)
                return Falhar();
            m_statusLido = codigo.toInt();
        } else if (linha.isEmpty()) {
            ComecarCorpo();
        } else {
            const qsizetype doisPontos = linha.indexOf(':');
            if (doisPontos <= 0)
                return Falhar();
            const QByteArray nome = linha.left(doisPontos).toLower();
            const QByteArray valor = linha.mid(doisPontos + 1).trimmed();
            // Two lengths that differ, or two encodings: whoever trusts one of them may read too little.
            if (m_campos.contains(nome) && m_campos[nome] != valor &&
                (nome == "content-length" || nome == "transfer-encoding"))
                return Falhar();
            m_campos[nome] = valor;
        }
    }
}

void RespostaHttp::ComecarCorpo()
{
    if (m_statusLido < 200) { // an interim answer: the real one follows
        m_statusLido = 0;
        m_campos.clear();
        return;
    }
    m_status = m_statusLido;
    const QByteArray codificacao = Campo("content-encoding").toLower();
    const QByteArray transferencia = Campo("transfer-encoding").toLower();
    const QByteArray tamanho = Campo("content-length");
    m_emTrecos = transferencia == "chunked";
    if ((!codificacao.isEmpty() && codificacao != "identity") || (!transferencia.isEmpty() && !m_emTrecos))
        return Falhar();
    if (!m_emTrecos && m_campos.contains("content-length")) {
        if (!SoDigitos(tamanho))
            return Falhar();
        m_tamanho = m_faltam = tamanho.toLongLong();
    }
    m_lidosDaCabeca = 0;
    m_estado = Estado::Corpo;
}

void RespostaHttp::LerCorpo()
{
    if (m_emTrecos) {
        LerTrecos();
        return;
    }
    if (m_tamanho < 0) {
        m_corpo += m_chegados;
        m_chegados.clear();
        return;
    }
    const QByteArray parte = m_chegados.left(m_faltam);
    m_corpo += parte;
    m_faltam -= parte.size();
    m_chegados.clear();
    if (m_faltam == 0)
        m_estado = Estado::Fim;
}

void RespostaHttp::LerTrecos()
{
    QByteArray linha;
    while (m_estado == Estado::Corpo) {
        switch (m_treco) {
        case Treco::Tamanho: {
            if (!Linha(linha))
                return;
            bool ok = false;
            const QByteArray numero = linha.split(';').constFirst().trimmed(); // extensions say nothing to us
            m_faltam = numero.size() <= 8 && !numero.startsWith('-') && !numero.startsWith('+')
                           ? numero.toLongLong(&ok, 16)
                           : 0;
            if (!ok)
                return Falhar();
            m_treco = m_faltam == 0 ? Treco::Final : Treco::Dados;
            break;
        }
        case Treco::Dados: {
            const QByteArray parte = m_chegados.left(m_faltam);
            m_corpo += parte;
            m_chegados.remove(0, parte.size());
            m_faltam -= parte.size();
            if (m_faltam > 0)
                return;
            m_treco = Treco::Quebra;
            break;
        }
        case Treco::Quebra:
            if (!Linha(linha))
                return;
            if (!linha.isEmpty())
                return Falhar();
            m_lidosDaCabeca = 0;
            m_treco = Treco::Tamanho;
            break;
        case Treco::Final: // trailing fields, up to an empty line
            if (!Linha(linha))
                return;
            if (linha.isEmpty())
                m_estado = Estado::Fim;
            break;
        }
    }
}

void RespostaHttp::Falhar()
{
    m_estado = Estado::Erro;
    m_chegados.clear();
    m_corpo.clear();
}
