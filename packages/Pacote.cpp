#include "packages/Pacote.h"

#include "base/PaginaCodigo.h"
#include "base/Texto.h"
#include "packages/Base64Class.h"
#include "packages/StringClass.h"

#include <QIODevice>

#include <cstring>
#include <utility>

namespace
{
constexpr auto kReceita = u"<RECEITA>";
constexpr auto kItem = u"<ITEM>";
constexpr auto kVirgula = "\\VG/";
constexpr auto kQuebra = "</BR\\>";
constexpr auto kFimDeLinha = "\r\n";
constexpr qint64 kBloco = 64 * 1024;

QString SemVirgulas(QString valor)
{
    return valor.replace(",", kVirgula);
}

// Line breaks first: their escape holds no comma, the commas' escape no line break.
QString SemQuebrasNemVirgulas(QString valor)
{
    return SemVirgulas(valor.replace(kFimDeLinha, kQuebra));
}

QString Linha(const QString &tag, const QString &valor)
{
    return "<" + tag + ">" + valor + "</" + tag + ">" + kFimDeLinha;
}

/// Calls `parte` for each piece of `texto` that `separador` sets apart, the first (possibly empty) included.
template <class Funcao>
void Separar(QStringView texto, QStringView separador, Funcao parte)
{
    qsizetype inicio = 0;
    for (qsizetype i = texto.indexOf(separador); i >= 0; i = texto.indexOf(separador, inicio)) {
        parte(texto.sliced(inicio, i - inicio));
        inicio = i + separador.size();
    }
    parte(texto.sliced(inicio));
}
} // namespace

QString Pacote::Cabecalho()
{
    return "Exportação do Cozinhario 2005 por Tamarel";
}

QByteArray Pacote::EscreverCabecalho()
{
    return PaginaCodigo::ParaAnsi(Cabecalho() + kFimDeLinha);
}

QByteArray Pacote::EscreverReceita(const Receita &receita)
{
    QString texto = "<RECEITA>\r\n";
    texto += Linha("NOME", SemVirgulas(Aparar(receita.Nome)));
    texto += Linha("CLASSIFICACAO", SemVirgulas(Aparar(receita.Classificacao)));
    texto += Linha("MODO", SemQuebrasNemVirgulas(Aparar(receita.Modo)));
    // Kept on purpose: servings, calories and kind keep their commas.
    texto += Linha("PORCOES", Aparar(receita.Porcoes));
    texto += Linha("PREPARO", SemVirgulas(Aparar(receita.Preparo)));
    texto += Linha("TIPO_CALORIAS", Aparar(receita.Tipo_Calorias));
    texto += Linha("CALORIAS", Aparar(receita.Calorias));
    texto += Linha("TIPO", Aparar(receita.Tipo));
    texto += Linha("ORIGEM", SemVirgulas(Aparar(receita.Origem)));
    texto += Linha("OBSERVACAO", SemQuebrasNemVirgulas(Aparar(receita.Observacao)));
    QByteArray bytes = PaginaCodigo::ParaAnsi(texto);

    if (!receita.DadosFigura.isEmpty()) {
        bytes += PaginaCodigo::ParaAnsi(Linha("FIGURA", Aparar(receita.Figura)));
        bytes += "<DADOS_FIGURA>" + Base64Class().Codificar(receita.DadosFigura) + "</DADOS_FIGURA>\r\n";
    }

    texto = "<INGREDIENTES>\r\n";
    for (const Ingrediente &linha : receita.Ingredientes) {
        texto += "<ITEM>\r\n";
        texto += Linha("INGREDIENTE", SemVirgulas(Aparar(linha.Ingrediente)));
        texto += Linha("QUANTIDADE", SemVirgulas(Aparar(linha.Quantidade)));
        texto += Linha("UNIDADE", SemVirgulas(Aparar(linha.Unidade)));
    }
    texto += "</INGREDIENTES>\r\n";
    return bytes + PaginaCodigo::ParaAnsi(texto);
}

QString Pacote::LerTexto(QIODevice &arquivo)
{
    StringClass texto;
    QByteArray linha;
    QByteArray bloco(kBloco, Qt::Uninitialized);
    bool depoisDeCr = false;
    const auto terminarLinha = [&] {
        texto.Append(PaginaCodigo::DeAnsi(linha));
        texto.Append(u"\r\n");
        linha.clear();
    };

    for (qint64 lidos; (lidos = arquivo.read(bloco.data(), kBloco)) > 0;) {
        const char *inicio = bloco.constData();
        const char *const fim = inicio + lidos;
        if (std::exchange(depoisDeCr, false) && *inicio == '\n')
            ++inicio; // the LF of a CR LF that lies across two blocks
        while (inicio < fim) {
            const auto *cr = static_cast<const char *>(std::memchr(inicio, '\r', std::size_t(fim - inicio)));
            linha.append(inicio, (cr ? cr : fim) - inicio);
            if (!cr)
                break;
            terminarLinha();
            inicio = cr + 1;
            depoisDeCr = inicio == fim;
            if (inicio < fim && *inicio == '\n')
                ++inicio;
        }
    }
    while (linha.endsWith('\0'))
        linha.chop(1);
    if (!linha.isEmpty())
        terminarLinha();
    return std::move(texto).Value();
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
    return resto.endsWith(u"\r\n") ? resto.chopped(2) : resto;
}

std::vector<Pacote::Registro> Pacote::Registro::Itens() const
{
    std::vector<Registro> itens;
    bool primeiro = true;
    Separar(Valor(u"INGREDIENTES"), kItem, [&](QStringView parte) {
        if (!std::exchange(primeiro, false))
            itens.emplace_back(parte);
    });
    return itens;
}

QByteArray Pacote::Registro::DadosFigura() const
{
    const QStringView base64 = Valor(u"DADOS_FIGURA");
    return base64.isEmpty() ? QByteArray() : Base64Class().Decodificar(PaginaCodigo::ParaAnsi(base64));
}

std::optional<Pacote::Texto> Pacote::Texto::Dividir(const QString &texto)
{
    Texto dividido;
    dividido.m_texto = texto;
    bool primeiro = true;
    bool nosso = false;
    Separar(dividido.m_texto, kReceita, [&](QStringView parte) {
        if (std::exchange(primeiro, false))
            nosso = parte == QString(Cabecalho() + kFimDeLinha);
        else if (nosso)
            dividido.m_registros.emplace_back(parte);
    });
    return nosso ? std::optional(std::move(dividido)) : std::nullopt;
}

QString Pacote::DesfazerVirgulas(QStringView valor)
{
    return valor.toString().replace(kVirgula, ",");
}

QString Pacote::DesfazerQuebras(QStringView valor)
{
    return valor.toString().replace(kQuebra, kFimDeLinha);
}
