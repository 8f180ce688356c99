#include "print/ServicoImpressao.h"

#include "print/BibliotecaCups.h"
#include "print/ErroImpressao.h"

#include <QFile>
#include <QIODevice>

#include <cups/ipp.h>

namespace
{
// How long somebody who is there may take to say so, and then to answer: a busy machine needs its time.
constexpr int kEsperaMs = 5000;
constexpr double kRespostaSegundos = 30;

const QString kSemResposta = QStringLiteral("O Serviço de Impressão não Responde.");
const QString kNaoImpresso = QStringLiteral(" O Documento não foi Impresso!");

int DesistirDeEsperar(http_t *, void *)
{
    return 0;
}

/// "Cozinha" of "Cozinha/rascunho".
QByteArray NomeDaFila(const QString &nome)
{
    return nome.section(u'/', 0, 0).toUtf8();
}

struct Destinos {
    explicit Destinos(const BibliotecaCups &biblioteca, http_t *http)
        : cups(biblioteca)
    {
        quantos = cups.GetDests2(http, &lista);
    }
    ~Destinos() { cups.FreeDests(quantos, lista); }
    Destinos(const Destinos &) = delete;
    Destinos &operator=(const Destinos &) = delete;

    static QString Nome(const cups_dest_t &destino)
    {
        QString nome = QString::fromUtf8(destino.name);
        if (destino.instance)
            nome += u'/' + QString::fromUtf8(destino.instance);
        return nome;
    }

    const BibliotecaCups &cups;
    cups_dest_t *lista = nullptr;
    int quantos = 0;
};

/// Options as the library takes them.
struct Opcoes {
    explicit Opcoes(const BibliotecaCups &biblioteca)
        : cups(biblioteca)
    {
    }
    ~Opcoes() { cups.FreeOptions(quantas, lista); }
    Opcoes(const Opcoes &) = delete;
    Opcoes &operator=(const Opcoes &) = delete;
    void Acrescentar(const QString &nome, const QString &valor)
    {
        quantas = cups.AddOption(nome.toUtf8().constData(), valor.toUtf8().constData(), quantas, &lista);
    }

    const BibliotecaCups &cups;
    cups_option_t *lista = nullptr;
    int quantas = 0;
};

EscolhaDaDescricao LerEscolha(const BibliotecaCups &cups, ppd_file_t *ppd,
                              std::initializer_list<const char *> nomes)
{
    EscolhaDaDescricao lida;
    for (const char *nome : nomes) {
        const ppd_option_t *opcao = cups.PpdFindOption(ppd, nome);
        if (!opcao)
            continue;
        lida.opcao = QString::fromLatin1(nome);
        if (const ppd_choice_t *escolha = cups.PpdFindMarkedChoice(ppd, nome))
            lida.escolha = QString::fromUtf8(escolha->choice);
        for (int i = 0; i < opcao->num_choices; ++i)
            lida.possiveis << QString::fromUtf8(opcao->choices[i].choice);
        break;
    }
    return lida;
}
} // namespace

ServicoImpressao::ServicoImpressao()
    : m_cups(BibliotecaCups::Obter())
{
    if (!m_cups)
        return;
    m_http = m_cups->HttpConnect2(m_cups->Server(), m_cups->Port(), nullptr, AF_UNSPEC, m_cups->Encryption(),
                                  1, kEsperaMs, nullptr);
    if (!m_http)
        return;
    m_cups->HttpSetTimeout(m_http, kEsperaMs / 1000.0, DesistirDeEsperar, nullptr);
    // Who is frozen still takes calls: only an answer shows that somebody is there.
    ipp_t *resposta = m_cups->DoRequest(m_http, m_cups->NewRequest(IPP_OP_CUPS_GET_DEFAULT), "/");
    const bool respondeu = resposta != nullptr;
    m_cups->Delete(resposta);
    if (!respondeu) {
        m_cups->HttpClose(m_http);
        m_http = nullptr;
        throw ErroImpressao(kSemResposta + kNaoImpresso);
    }
    m_cups->HttpSetTimeout(m_http, kRespostaSegundos, DesistirDeEsperar, nullptr);
}

ServicoImpressao::~ServicoImpressao()
{
    if (m_http)
        m_cups->HttpClose(m_http);
}

QList<ServicoImpressao::Fila> ServicoImpressao::Filas() const
{
    if (!Responde())
        return {};
    const Destinos destinos(*m_cups, m_http);
    QList<Fila> filas;
    bool haPadrao = false;
    for (int i = 0; i < destinos.quantos; ++i) {
        filas.append({Destinos::Nome(destinos.lista[i]), destinos.lista[i].is_default != 0});
        haPadrao |= filas.last().padrao;
    }
    if (!haPadrao) { // the user's default may name a queue that is gone
        const char *nome = m_cups->GetDefault2(m_http);
        for (Fila &fila : filas)
            fila.padrao = nome && fila.nome == QString::fromUtf8(nome);
    }
    return filas;
}

ConfiguracaoDaFila ServicoImpressao::Configuracao(const QString &nome) const
{
    ConfiguracaoDaFila fila;
    if (!Responde())
        return fila;
    // One queue is asked for alone: the list of all may wait for printers of the network to announce
    // themselves.
    const QByteArray instancia = nome.section(u'/', 1).toUtf8();
    cups_dest_t *destino = m_cups->GetNamedDest(m_http, NomeDaFila(nome).constData(),
                                                instancia.isEmpty() ? nullptr : instancia.constData());
    if (!destino)
        return fila;
    fila.nome = nome;
    for (int i = 0; i < destino->num_options; ++i)
        fila.doUsuario.insert(QString::fromUtf8(destino->options[i].name),
                              QString::fromUtf8(destino->options[i].value));
    m_cups->FreeDests(1, destino);
    LerAtributos(fila);
    LerDescricao(fila);
    return fila;
}

void ServicoImpressao::LerAtributos(ConfiguracaoDaFila &fila) const
{
    char uri[1024];
    m_cups->HttpAssembleURIf(HTTP_URI_CODING_ALL, uri, sizeof uri, "ipp", nullptr, "localhost", 0,
                             "/printers/%s", NomeDaFila(fila.nome).constData());
    ipp_t *pedido = m_cups->NewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
    m_cups->AddString(pedido, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri);
    m_cups->AddString(pedido, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
                      "printer-defaults");
    ipp_t *resposta = m_cups->DoRequest(m_http, pedido, "/");
    constexpr char kFim[] = "-default";
    for (ipp_attribute_t *atributo = resposta ? m_cups->FirstAttribute(resposta) : nullptr; atributo;
         atributo = m_cups->NextAttribute(resposta)) {
        QString nome = QString::fromLatin1(m_cups->GetName(atributo));
        if (!nome.endsWith(QLatin1String(kFim)))
            continue;
        nome.chop(static_cast<qsizetype>(sizeof kFim - 1));
        switch (m_cups->GetValueTag(atributo)) {
        case IPP_TAG_NOVALUE:
            break;
        case IPP_TAG_ENUM:
        case IPP_TAG_INTEGER:
            fila.doServico.insert(nome, QString::number(m_cups->GetInteger(atributo, 0)));
            break;
        default: {
            char texto[1024];
            m_cups->AttributeString(atributo, texto, sizeof texto);
            fila.doServico.insert(nome, QString::fromUtf8(texto));
        }
        }
    }
    m_cups->Delete(resposta);
}

void ServicoImpressao::LerDescricao(ConfiguracaoDaFila &fila) const
{
    const char *nome = m_cups->GetPPD2(m_http, NomeDaFila(fila.nome).constData());
    if (!nome)
        return;
    const QByteArray arquivo(nome);
    if (ppd_file_t *ppd = m_cups->PpdOpenFile(arquivo.constData())) {
        m_cups->PpdMarkDefaults(ppd);
        Opcoes opcoes(*m_cups);
        for (auto opcao = fila.doUsuario.constBegin(); opcao != fila.doUsuario.constEnd(); ++opcao) {
            // These two speak for themselves; marked here they would hide what the description says.
            if (opcao.key() != u"print-quality" && opcao.key() != u"print-color-mode")
                opcoes.Acrescentar(opcao.key(), opcao.value());
        }
        m_cups->MarkOptions(ppd, opcoes.quantas, opcoes.lista);
        fila.qualidade =
            LerEscolha(*m_cups, ppd, {"cupsPrintQuality", "PrintQuality", "OutputMode", "Quality"});
        fila.cor = LerEscolha(*m_cups, ppd, {"ColorModel", "ColorMode", "SelectColor"});
        m_cups->PpdClose(ppd);
    }
    QFile::remove(QFile::decodeName(arquivo)); // a copy, or a link to the service's own
}

QSizeF ServicoImpressao::Papel(const ConfiguracaoDaFila &fila) const
{
    if (!Responde())
        return {};
    const QString pedido =
        fila.doUsuario.value(QStringLiteral("PageSize"), fila.Opcao(QStringLiteral("media")));
    for (const QString &parte : pedido.split(u',')) { // "A4,Tray2": size and source may stand together
        const QByteArray nome = parte.toUtf8();
        const pwg_media_t *media = m_cups->MediaForPWG(nome.constData());
        if (!media)
            media = m_cups->MediaForLegacy(nome.constData());
        if (!media)
            media = m_cups->MediaForPPD(nome.constData());
        if (media && media->width > 0 && media->length > 0)
            return QSizeF(media->width, media->length) / 100.0; // of 2540ths of an inch
    }
    return {};
}

void ServicoImpressao::Imprimir(const QString &nome, const QString &titulo,
                                const QList<std::pair<QString, QString>> &opcoes, QIODevice &documento) const
{
    if (!Responde())
        throw ErroImpressao(kSemResposta + kNaoImpresso);
    const QByteArray fila = NomeDaFila(nome);
    const QByteArray nomeDoTrabalho = titulo.toUtf8();
    Opcoes lista(*m_cups);
    for (const auto &[opcao, valor] : opcoes)
        lista.Acrescentar(opcao, valor);

    const int trabalho =
        m_cups->CreateJob(m_http, fila.constData(), nomeDoTrabalho.constData(), lista.quantas, lista.lista);
    if (trabalho == 0)
        Recusado(nome);
    http_status_t estado = m_cups->StartDocument(m_http, fila.constData(), trabalho,
                                                 nomeDoTrabalho.constData(), CUPS_FORMAT_AUTO, 1);
    QByteArray pedaco;
    while (estado == HTTP_STATUS_CONTINUE && !(pedaco = documento.read(1 << 16)).isEmpty())
        estado = m_cups->WriteRequestData(m_http, pedaco.constData(), static_cast<size_t>(pedaco.size()));
    const bool enviado = estado == HTTP_STATUS_CONTINUE &&
                         m_cups->FinishDocument(m_http, fila.constData()) < IPP_STATUS_REDIRECTION_OTHER_SITE;
    if (enviado)
        return;
    try {
        Recusado(nome);
    } catch (const ErroImpressao &) {
        m_cups->CancelJob2(m_http, fila.constData(), trabalho, 0); // no half job is left behind
        throw;
    }
}

void ServicoImpressao::Recusado(const QString &nome) const
{
    const ipp_status_t estado = m_cups->LastError();
    QString motivo;
    switch (estado) {
    case IPP_STATUS_ERROR_NOT_FOUND:
    case IPP_STATUS_ERROR_GONE:
        motivo = QStringLiteral("A Impressora \"%1\" não foi Encontrada.").arg(nome);
        break;
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
        motivo = QStringLiteral("O Usuário não tem Permissão para usar a Impressora \"%1\".").arg(nome);
        break;
    case IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS:
        motivo = QStringLiteral("A Impressora \"%1\" não está Aceitando Documentos.").arg(nome);
        break;
    case IPP_STATUS_ERROR_INTERNAL: // what the library says when the line breaks, and of a queue that is gone
    case IPP_STATUS_ERROR_SERVICE_UNAVAILABLE:
    case IPP_STATUS_ERROR_DEVICE:
    case IPP_STATUS_ERROR_TIMEOUT: {
        const ServicoImpressao outraVez;
        const bool sumiu = outraVez.Responde() && outraVez.Configuracao(nome).nome.isEmpty();
        motivo = sumiu ? QStringLiteral("A Impressora \"%1\" não foi Encontrada.").arg(nome) : kSemResposta;
        break;
    }
    default:
        motivo =
            QStringLiteral("O Sistema de Impressão Recusou o Documento para a Impressora \"%1\" (código %2).")
                .arg(nome)
                .arg(static_cast<int>(estado), 4, 16, QLatin1Char('0'));
    }
    throw ErroImpressao(motivo + kNaoImpresso);
}
