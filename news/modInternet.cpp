#include "news/modInternet.h"

#include "base/EventosPendentes.h"

modInternet::modInternet(std::unique_ptr<ClienteWeb> cliente)
    : m_cliente(std::move(cliente))
{
}

modInternet::~modInternet() = default;

QByteArray modInternet::LerUrl(const QString &url)
{
    if (m_abandonar || Encerrando())
        return {};
    const std::unique_ptr<Transferencia> transferencia = m_cliente->Abrir(QUrl(url, QUrl::StrictMode));
    if (!transferencia)
        return {};

    const bool contar = !url.contains(u"info");
    QByteArray texto;
    QByteArray pedaco = transferencia->Ler(kPedaco);
    while (!pedaco.isEmpty()) {
        texto += pedaco;
        if (m_abandonar || Encerrando())
            return {};
        if (contar) {
            ++m_pedacos;
            DeixarEventosRodarem();
        }
        pedaco = transferencia->Ler(kPedaco);
    }
    return transferencia->Completa() ? texto : QByteArray();
}

void modInternet::Abandonar()
{
    m_abandonar = true;
    m_cliente->Interromper();
}
