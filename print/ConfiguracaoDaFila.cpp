#include "print/ConfiguracaoDaFila.h"

#include <cups/ipp.h>

#include <algorithm>

namespace
{
constexpr int kRascunho = -1;
constexpr int kBaixa = -2;
constexpr int kNormal = -3;
constexpr int kOtima = -4;
constexpr int kPretoBranco = 1;
constexpr int kColorido = 2;
constexpr int kPaisagem = 2;

const QString kCopias = QStringLiteral("copies");
const QString kOrientacao = QStringLiteral("orientation-requested");
const QString kDeitada = QStringLiteral("landscape"); // the older name of an option
const QString kQualidade = QStringLiteral("print-quality");
const QString kResolucao = QStringLiteral("printer-resolution");
const QString kCor = QStringLiteral("print-color-mode");

/// Dots an inch of "600dpi" or "600x300dpi", or of a number that is none of the three qualities; 0: no
/// resolution.
int Resolucao(const QString &valor)
{
    QString numero;
    for (const QChar letra : valor) {
        if (!letra.isDigit())
            break;
        numero += letra;
    }
    const int pontos = numero.toInt();
    const bool dpi = valor.endsWith(u"dpi", Qt::CaseInsensitive);
    return dpi || (numero.size() == valor.size() && pontos > IPP_QUALITY_HIGH) ? pontos : 0;
}

bool ContemUma(const QString &valor, std::initializer_list<const char *> palavras)
{
    return std::any_of(palavras.begin(), palavras.end(), [&](const char *palavra) {
        return valor.contains(QLatin1String(palavra), Qt::CaseInsensitive);
    });
}

/// The quality that a choice of the description or a word of the user means; 0 when it means none.
int QualidadeDaPalavra(const QString &palavra)
{
    if (const int pontos = Resolucao(palavra))
        return pontos;
    if (ContemUma(palavra, {"draft", "fast", "econo", "save"}))
        return kRascunho;
    if (ContemUma(palavra, {"high", "best", "fine", "photo", "super"}))
        return kOtima;
    if (ContemUma(palavra, {"low"}))
        return kBaixa;
    if (ContemUma(palavra, {"normal", "standard", "medium"}))
        return kNormal;
    return 0;
}

bool EhCinza(const QString &palavra)
{
    return ContemUma(palavra, {"gray", "grey", "mono", "black", "bi-level"});
}

int LerQualidade(const ConfiguracaoDaFila &fila)
{
    const QString ipp = fila.Opcao(kQualidade);
    switch (ipp.toInt()) {
    case IPP_QUALITY_DRAFT:
        return kRascunho;
    case IPP_QUALITY_HIGH:
        return kOtima;
    case IPP_QUALITY_NORMAL:
        if (fila.doUsuario.contains(kQualidade))
            return kNormal; // said, not merely assumed
        break;
    default:
        if (const int qualidade = QualidadeDaPalavra(ipp))
            return qualidade;
    }
    // "Normal" is also what the service says of a queue for which nobody has said anything.
    if (const int qualidade = QualidadeDaPalavra(fila.qualidade.escolha))
        return qualidade;
    if (fila.qualidade.opcao.isEmpty()) {
        if (const int pontos = Resolucao(fila.Opcao(kResolucao)))
            return pontos;
    }
    return kNormal;
}

int LerCor(const ConfiguracaoDaFila &fila)
{
    const QString ipp = fila.Opcao(kCor);
    if (!ipp.isEmpty() && ipp != u"auto") {
        if (EhCinza(ipp))
            return kPretoBranco;
        if (fila.doUsuario.value(kCor) == ipp && fila.doServico.value(kCor) != ipp)
            return kColorido; // the user's word stands above the description
    }
    if (!fila.cor.escolha.isEmpty())
        return EhCinza(fila.cor.escolha) ? kPretoBranco : kColorido;
    return ipp.isEmpty() ? kPretoBranco : kColorido;
}

/// 3 portrait, 4 landscape, 5 and 6 the same upside down.
int LerOrientacao(const ConfiguracaoDaFila &fila)
{
    if (fila.doUsuario.contains(kDeitada)) {
        const QString valor = fila.doUsuario.value(kDeitada).toLower();
        const bool nao = valor == u"false" || valor == u"no" || valor == u"off";
        return nao ? IPP_ORIENT_PORTRAIT : IPP_ORIENT_LANDSCAPE;
    }
    const int orientacao = fila.Opcao(kOrientacao).toInt();
    return orientacao >= IPP_ORIENT_PORTRAIT && orientacao <= IPP_ORIENT_REVERSE_PORTRAIT
               ? orientacao
               : static_cast<int>(IPP_ORIENT_PORTRAIT);
}

bool EhPaisagem(int orientacao)
{
    return orientacao == IPP_ORIENT_LANDSCAPE || orientacao == IPP_ORIENT_REVERSE_LANDSCAPE;
}

/// What the queue reports of itself is no option of a job.
bool EhDoTrabalho(const QString &opcao)
{
    if (opcao == kResolucao)
        return true;
    for (const char *inicio : {"printer-", "marker-", "device-", "auth-info", "cups-", "document-format"}) {
        if (opcao.startsWith(QLatin1String(inicio)))
            return false;
    }
    return true;
}

int QualidadeIpp(int qualidade)
{
    switch (qualidade) {
    case kRascunho:
    case kBaixa:
        return IPP_QUALITY_DRAFT;
    case kOtima:
        return IPP_QUALITY_HIGH;
    default:
        return IPP_QUALITY_NORMAL;
    }
}

/// The description's choice for what the dialog says: the queue's own when nothing was changed, else the
/// first that means the same; "" when there is none.
template <typename Significa>
QString EscolhaPara(const EscolhaDaDescricao &descricao, bool mudou, Significa &&significa)
{
    if (!mudou)
        return descricao.escolha;
    for (const QString &escolha : descricao.possiveis) {
        if (significa(escolha))
            return escolha;
    }
    return {};
}
} // namespace

QString ConfiguracaoDaFila::Opcao(const QString &opcao) const
{
    const auto achada = doUsuario.constFind(opcao);
    return achada != doUsuario.constEnd() ? *achada : doServico.value(opcao);
}

ImpressoraAtual LerConfiguracao(const ConfiguracaoDaFila &fila)
{
    ImpressoraAtual lida;
    lida.DeviceName = fila.nome;
    const QString copias = fila.Opcao(kCopias);
    if (!copias.isEmpty())
        lida.Copies = copias.toInt();
    lida.Orientation = EhPaisagem(LerOrientacao(fila)) ? kPaisagem : 1;
    lida.PrintQuality = LerQualidade(fila);
    lida.ColorMode = LerCor(fila);
    return lida;
}

QList<std::pair<QString, QString>> OpcoesDoTrabalho(const ConfiguracaoDaFila &fila,
                                                    const ImpressoraAtual &atual)
{
    const ImpressoraAtual propria = LerConfiguracao(fila);
    QMap<QString, QString> opcoes;
    for (auto opcao = fila.doUsuario.constBegin(); opcao != fila.doUsuario.constEnd(); ++opcao) {
        if (EhDoTrabalho(opcao.key()) && !opcao.value().isEmpty())
            opcoes.insert(opcao.key(), opcao.value());
    }
    opcoes.remove(kDeitada);

    opcoes.insert(kCopias, QString::number(std::max(atual.Copies, 1)));
    int orientacao = LerOrientacao(fila);
    if (EhPaisagem(orientacao) != (atual.Orientation == kPaisagem))
        orientacao = atual.Orientation == kPaisagem ? IPP_ORIENT_LANDSCAPE : IPP_ORIENT_PORTRAIT;
    opcoes.insert(kOrientacao, QString::number(orientacao));

    const int qualidade = QualidadeIpp(atual.PrintQuality);
    opcoes.insert(kQualidade, QString::number(qualidade));
    opcoes.insert(kCor,
                  atual.ColorMode == kColorido ? QStringLiteral("color") : QStringLiteral("monochrome"));

    const auto descrever = [&](const EscolhaDaDescricao &descricao, const QString &escolha) {
        if (descricao.opcao.isEmpty())
            return;
        if (escolha.isEmpty())
            opcoes.remove(descricao.opcao);
        else
            opcoes.insert(descricao.opcao, escolha);
    };
    descrever(fila.qualidade, EscolhaPara(fila.qualidade, atual.PrintQuality != propria.PrintQuality,
                                          [&](const QString &escolha) {
                                              const int significado = QualidadeDaPalavra(escolha);
                                              return significado < 0 &&
                                                     QualidadeIpp(significado) == qualidade;
                                          }));
    descrever(fila.cor,
              EscolhaPara(fila.cor, atual.ColorMode != propria.ColorMode, [&](const QString &escolha) {
                  return EhCinza(escolha) == (atual.ColorMode == kPretoBranco);
              }));

    QList<std::pair<QString, QString>> lista;
    for (auto opcao = opcoes.constBegin(); opcao != opcoes.constEnd(); ++opcao)
        lista.append({opcao.key(), opcao.value()});
    return lista;
}
