#include "packages/TextoDoPacote.h"

#include "base/PaginaCodigo.h"
#include "base/Texto.h"
#include "packages/Pacote.h"
#include "packages/StringClass.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <utility>

using Pacote::Faixa;
using Pacote::Janela;
using Pacote::Registro;

namespace
{
constexpr QByteArrayView kReceita = "<RECEITA>";
constexpr QByteArrayView kFigura = "<DADOS_FIGURA>";
constexpr QByteArrayView kFimDaFigura = "</DADOS_FIGURA";
constexpr QByteArrayView kNome = "<NOME>";
constexpr QStringView kFimDoNome = u"</NOME";
constexpr QStringView kItem = u"<ITEM>";
constexpr QStringView kFimDeLinha = u"\r\n";
constexpr qint64 kBloco = 256 * 1024;
/// A picture's data above this is left in the file.
constexpr qint64 kMaiorFiguraNoTexto = 1024 * 1024;
constexpr qint64 kMaiorCabecalho = 1000;

[[noreturn]] void Falhar(const QString &texto)
{
    throw std::runtime_error(texto.toStdString());
}

QString EmMegabytes(qsizetype caracteres)
{
    return QString::number(caracteres / (1024 * 1024)) + " milhões de letras";
}

/// Gives every line its CR LF: a CR that stands alone gets one, the LF of a CR LF is not taken for content.
class FimDasLinhas
{
public:
    void Passar(QByteArrayView bytes, QByteArray &saida)
    {
        const char *inicio = bytes.data();
        const char *const fim = inicio + bytes.size();
        if (inicio < fim && std::exchange(m_depoisDeCr, false) && *inicio == '\n')
            ++inicio; // it is there already
        while (inicio < fim) {
            m_noFim = false;
            const auto *cr = static_cast<const char *>(std::memchr(inicio, '\r', std::size_t(fim - inicio)));
            saida.append(inicio, (cr ? cr : fim) - inicio);
            if (!cr)
                return;
            saida.append("\r\n");
            m_noFim = true;
            inicio = cr + 1;
            m_depoisDeCr = inicio == fim;
            if (inicio < fim && *inicio == '\n')
                ++inicio;
        }
    }
    /// Whether the last that passed was a line end.
    bool NoFimDeUmaLinha() const { return m_noFim; }

private:
    bool m_depoisDeCr = false;
    bool m_noFim = false;
};

/// Puts a part of the file behind a text.
void AcrescentarFaixa(Janela &janela, Faixa faixa, FimDasLinhas &linhas, StringClass &texto)
{
    QByteArray bytes;
    while (faixa.inicio < faixa.fim) {
        const QByteArrayView visto = janela.Ver(faixa.inicio, faixa.fim);
        bytes.clear();
        linhas.Passar(visto, bytes);
        texto.Append(PaginaCodigo::DeAnsi(bytes));
        faixa.inicio += visto.size();
    }
}

QString TextoDaFaixa(Janela &janela, Faixa faixa)
{
    StringClass texto;
    FimDasLinhas linhas;
    AcrescentarFaixa(janela, faixa, linhas, texto);
    return std::move(texto).Value();
}

/// Where the text ends: before the 0x00 behind it.
qint64 FimDoTexto(Janela &janela, qint64 tamanho)
{
    qint64 fim = tamanho;
    while (fim > 0) {
        const qint64 inicio = std::max<qint64>(0, fim - kBloco);
        const QByteArrayView bytes = janela.Ver(inicio, fim, fim - inicio);
        qsizetype n = bytes.size();
        while (n > 0 && bytes[n - 1] == '\0')
            --n;
        fim = inicio + n;
        if (n > 0)
            break;
    }
    return fim;
}
} // namespace

Pacote::Janela::Janela(QIODevice &arquivo, std::function<void()> respirar)
    : m_arquivo(arquivo)
    , m_respirar(std::move(respirar))
{
}

QByteArrayView Pacote::Janela::Ver(qint64 de, qint64 ate, qint64 minimo)
{
    const qint64 preciso = std::min(std::max<qint64>(minimo, 1), ate - de);
    if (de < m_inicio || de + preciso > m_inicio + m_bytes.size()) {
        if (m_respirar)
            m_respirar();
        m_inicio = de;
        if (!m_arquivo.seek(de))
            Falhar("Não foi possível ler o pacote.");
        m_bytes.resize(std::max(preciso, kBloco));
        const qint64 lidos = m_arquivo.read(m_bytes.data(), m_bytes.size());
        m_bytes.resize(std::max<qint64>(lidos, 0));
        if (lidos < preciso)
            Falhar("Não foi possível ler o pacote.");
    }
    const QByteArrayView visto = QByteArrayView(m_bytes).sliced(de - m_inicio);
    return visto.first(std::min<qint64>(visto.size(), ate - de));
}

qint64 Pacote::Janela::Procurar(QByteArrayView agulha, Faixa faixa)
{
    while (faixa.Tamanho() >= agulha.size()) {
        const QByteArrayView visto = Ver(faixa.inicio, faixa.fim, agulha.size());
        const qsizetype achado = visto.indexOf(agulha);
        if (achado >= 0)
            return faixa.inicio + achado;
        faixa.inicio += visto.size() - (agulha.size() - 1);
    }
    return -1;
}

QByteArray Pacote::LeitorDaFigura::LerBloco()
{
    if (!m_janela) {
        const QByteArray base64 = std::exchange(m_base64, {});
        return base64.isEmpty() ? base64 : Base64Class().Decodificar(base64);
    }
    QByteArray bytes;
    while (bytes.isEmpty() && m_faixa.Tamanho() > 0) {
        const QByteArrayView visto = m_janela->Ver(m_faixa.inicio, m_faixa.fim);
        m_faixa.inicio += visto.size();
        // Every CR stands for a line end here, with or without an LF behind it: FimDasLinhas says so.
        const bool crNoFim = visto.back() == '\r';
        QByteArray linhas;
        qsizetype inicio = 0;
        for (qsizetype cr = visto.indexOf('\r'); cr >= 0; cr = visto.indexOf('\r', inicio)) {
            linhas.append(visto.sliced(inicio, cr - inicio));
            inicio = cr + 1;
            if (inicio < visto.size() && visto[inicio] == '\n')
                ++inicio;
        }
        linhas.append(visto.sliced(inicio));
        if (crNoFim && m_faixa.Tamanho() > 0 && m_janela->Ver(m_faixa.inicio, m_faixa.fim)[0] == '\n')
            ++m_faixa.inicio;
        bytes = m_decodificador.Passar(linhas);
        if (m_faixa.Tamanho() == 0)
            bytes += m_decodificador.Terminar();
    }
    return bytes;
}

QStringView Pacote::Registro::Valor(QStringView tag) const
{
    const QString nome = tag.toString();
    const QString abertura = "<" + nome + ">";
    const qsizetype achado = m_texto.indexOf(abertura);
    if (achado < 0)
        return {};
    // From the opening tag on: "</TIPO" would match "</TIPO_CALORIAS>", which stands before it.
    const QStringView resto = m_texto.sliced(achado + abertura.size());
    const qsizetype fim = resto.indexOf("</" + nome);
    if (fim >= 0)
        return resto.first(fim);
    return resto.endsWith(kFimDeLinha) ? resto.chopped(2) : resto;
}

std::vector<Registro> Pacote::Registro::Itens() const
{
    std::vector<Registro> itens;
    const QStringView linhas = Valor(u"INGREDIENTES");
    for (qsizetype i = linhas.indexOf(kItem); i >= 0;) {
        const qsizetype inicio = i + kItem.size();
        i = linhas.indexOf(kItem, inicio);
        itens.push_back(Registro(m_dono, linhas.sliced(inicio, (i < 0 ? linhas.size() : i) - inicio)));
    }
    return itens;
}

Pacote::LeitorDaFigura Pacote::Registro::AbrirFigura() const
{
    LeitorDaFigura leitor;
    leitor.m_janela = m_janela.get();
    leitor.m_faixa = m_figura;
    if (!m_janela)
        leitor.m_base64 = PaginaCodigo::ParaAnsi(Valor(u"DADOS_FIGURA"));
    return leitor;
}

QString Pacote::Registro::Excesso() const
{
    if (m_cortado)
        return "A receita tem textos grandes demais: ao todo, mais de " + EmMegabytes(kMaiorReceita) + ".";
    // What is short as a whole needs no closer look.
    if (m_texto.size() >= kMaisLinhas * kItem.size() &&
        ContarOcorrencias(Valor(u"INGREDIENTES"), kItem) > kMaisLinhas)
        return "A receita tem ingredientes demais: mais de " + QString::number(kMaisLinhas) + " linhas.";
    if (m_texto.size() <= kMaiorValor)
        return {};
    QString campo;
    const auto examinar = [&campo](const Registro &registro, std::initializer_list<QStringView> tags) {
        for (const QStringView tag : tags)
            if (registro.Valor(tag).size() > kMaiorValor)
                campo = tag.toString();
    };
    examinar(*this, {u"NOME", u"CLASSIFICACAO", u"MODO", u"PORCOES", u"PREPARO", u"TIPO_CALORIAS",
                     u"CALORIAS", u"TIPO", u"ORIGEM", u"OBSERVACAO", u"FIGURA"});
    for (const Registro &item : Itens())
        examinar(item, {u"INGREDIENTE", u"QUANTIDADE", u"UNIDADE"});
    return campo.isEmpty() ? QString()
                           : "O campo " + campo + " da receita, no pacote, é grande demais: mais de " +
                                 EmMegabytes(kMaiorValor) + ".";
}

Pacote::Texto::Abertura Pacote::Texto::Abrir(QIODevice &arquivo, const std::function<void()> &respirar)
{
    m_faixas.clear();
    m_janela = std::make_shared<Janela>(arquivo, respirar);
    const qint64 fim = FimDoTexto(*m_janela, arquivo.size());
    const qint64 primeiro = m_janela->Procurar(kReceita, {0, fim});

    const Faixa cabecalho = {0, primeiro < 0 ? fim : primeiro};
    StringClass texto;
    FimDasLinhas linhas;
    if (cabecalho.Tamanho() <= kMaiorCabecalho)
        AcrescentarFaixa(*m_janela, cabecalho, linhas, texto);
    if (primeiro < 0 && cabecalho.Tamanho() > 0 && !linhas.NoFimDeUmaLinha())
        texto.Append(kFimDeLinha);
    if (texto.Value() != Cabecalho() + "\r\n")
        return Abertura::OutroTexto;

    for (qint64 inicio = primeiro; inicio >= 0;) {
        inicio += kReceita.size();
        const qint64 proximo = m_janela->Procurar(kReceita, {inicio, fim});
        if (Quantas() == kMaisReceitas)
            return Abertura::ReceitasDemais;
        m_faixas.push_back({inicio, proximo < 0 ? fim : proximo});
        inicio = proximo;
    }
    return Abertura::Aberto;
}

Registro Pacote::Texto::operator[](qsizetype i) const
{
    const Faixa tudo = m_faixas[static_cast<std::size_t>(i)];
    // A large picture's data stays where it is: what is left out ends before the next "<", so that every tag
    // of the record is found as if it were there.
    Faixa figura = {tudo.fim, tudo.fim};
    const qint64 abertura = m_janela->Procurar(kFigura, tudo);
    if (abertura >= 0) {
        const qint64 dados = abertura + kFigura.size();
        const qint64 sinal = m_janela->Procurar("<", {dados, tudo.fim});
        const qint64 fimDosDados = sinal < 0 ? tudo.fim : sinal;
        if (fimDosDados - dados > kMaiorFiguraNoTexto)
            figura = {dados, fimDosDados};
    }

    Faixa antes = {tudo.inicio, figura.inicio};
    Faixa depois = {figura.fim, tudo.fim};
    const bool cortado = antes.Tamanho() + depois.Tamanho() > kMaiorReceita;
    if (cortado) {
        antes.fim = std::min(antes.fim, antes.inicio + kBloco);
        depois.fim = std::min(depois.fim, depois.inicio + kBloco);
    }
    StringClass texto;
    FimDasLinhas linhas;
    AcrescentarFaixa(*m_janela, antes, linhas, texto);
    AcrescentarFaixa(*m_janela, depois, linhas, texto);
    const bool ultimo = i + 1 == Quantas();
    if (ultimo && !linhas.NoFimDeUmaLinha())
        texto.Append(kFimDeLinha);

    Registro registro(std::move(texto).Value());
    registro.m_cortado = cortado;
    if (figura.Tamanho() > 0) {
        const qint64 fechamento = m_janela->Procurar(kFimDaFigura, {figura.inicio, tudo.fim});
        registro.m_figura = {figura.inicio, fechamento < 0 ? tudo.fim : fechamento};
        registro.m_janela = m_janela;
    }
    return registro;
}

QString Pacote::Texto::Nome(qsizetype i, qsizetype maximo) const
{
    const Faixa tudo = m_faixas[static_cast<std::size_t>(i)];
    const qint64 abertura = m_janela->Procurar(kNome, tudo);
    if (abertura < 0)
        return {};
    const qint64 inicio = abertura + kNome.size();
    // Line ends may become longer here, never shorter by more than half.
    const qint64 fim = std::min(tudo.fim, inicio + maximo * 2 + kFimDoNome.size());
    const QString texto = TextoDaFaixa(*m_janela, {inicio, fim});
    const qsizetype fechamento = texto.indexOf(kFimDoNome);
    QStringView nome = fechamento >= 0 ? QStringView(texto).first(fechamento) : QStringView(texto);
    if (fechamento < 0 && fim == tudo.fim && nome.endsWith(kFimDeLinha))
        nome.chop(2);
    return nome.first(std::min(nome.size(), maximo)).toString();
}
