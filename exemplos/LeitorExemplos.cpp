#include "exemplos/LeitorExemplos.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QStringDecoder>

namespace
{
enum class Secao { Campos, Ingredientes, Modo, Observacao };

QString Local(const QString &arquivo, int linha)
{
    return linha > 0 ? QStringLiteral("%1:%2").arg(arquivo).arg(linha) : arquivo;
}

/// Reads a file line by line; each section has its own way with a line.
class Interprete
{
public:
    explicit Interprete(const QString &arquivo)
        : m_arquivo(arquivo)
    {
    }

    void Linha(const QString &texto)
    {
        ++m_linha;
        if (AbrirSecao(texto))
            return;
        switch (m_secao) {
        case Secao::Campos:
            LerCampo(texto);
            break;
        case Secao::Ingredientes:
            LerIngrediente(texto);
            break;
        case Secao::Modo:
            LerParagrafo(texto, m_receita.modo);
            break;
        case Secao::Observacao:
            LerParagrafo(texto, m_receita.observacao);
            break;
        }
    }

    ReceitaExemplo Terminar() const
    {
        if (m_receita.nome.isEmpty())
            throw ErroExemplo(m_arquivo, 0, "the recipe has no name (Nome:)");
        if (m_receita.ingredientes.isEmpty())
            throw ErroExemplo(m_arquivo, 0, "the recipe has no ingredients (Ingredientes:)");
        if (m_receita.modo.isEmpty())
            throw ErroExemplo(m_arquivo, 0, "the recipe has no method (Modo:)");
        return m_receita;
    }

    [[noreturn]] void Recusar(const QString &motivo) const { throw ErroExemplo(m_arquivo, m_linha, motivo); }

private:
    bool AbrirSecao(const QString &texto)
    {
        if (texto == "Ingredientes:")
            m_secao = Secao::Ingredientes;
        else if (texto == "Modo:")
            m_secao = Secao::Modo;
        else if (texto == "Observacao:")
            m_secao = Secao::Observacao;
        else
            return false;
        MarcarVisto(texto.chopped(1));
        m_novoParagrafo = true;
        return true;
    }

    void MarcarVisto(const QString &nome)
    {
        if (m_vistos.contains(nome))
            Recusar(QStringLiteral("\"%1\" is given twice").arg(nome));
        m_vistos.insert(nome);
    }

    void LerCampo(const QString &texto)
    {
        if (texto.isEmpty())
            return;
        const qsizetype doisPontos = texto.indexOf(u':');
        if (doisPontos < 0)
            Recusar(QStringLiteral("expected \"Field: value\", found \"%1\"").arg(texto));
        const QString campo = texto.left(doisPontos);
        const QString valor = texto.mid(doisPontos + 1).trimmed();
        MarcarVisto(campo);
        if (valor.isEmpty())
            Recusar(QStringLiteral("\"%1\" has no value; leave the line out instead").arg(campo));
        if (campo == "Nome")
            m_receita.nome = valor;
        else if (campo == "Tipo")
            m_receita.tipo = valor;
        else if (campo == "Origem")
            m_receita.origem = valor;
        else if (campo == "Preparo")
            m_receita.preparo = valor;
        else if (campo == "Porcoes")
            m_receita.porcoes = Inteiro(valor, campo);
        else if (campo == "Calorias")
            LerCalorias(valor);
        else if (campo == "Figura")
            LerFigura(valor);
        else
            Recusar(QStringLiteral("unknown field \"%1\"").arg(campo));
    }

    int Inteiro(const QString &valor, const QString &campo) const
    {
        bool ok = false;
        const int numero = valor.toInt(&ok);
        if (!ok || numero < 0)
            Recusar(QStringLiteral("\"%1\" must be a whole number, found \"%2\"").arg(campo, valor));
        return numero;
    }

    void LerCalorias(const QString &valor)
    {
        const qsizetype branco = valor.indexOf(u' ');
        m_receita.calorias = Inteiro(valor.left(branco), "Calorias");
        if (branco < 0)
            return;
        const QString tipo = valor.mid(branco).trimmed();
        if (tipo != "R" && tipo != "P")
            Recusar(QStringLiteral("calories count for R (recipe) or P (serving), found \"%1\"").arg(tipo));
        m_receita.tipoCalorias = tipo[0].toLatin1();
    }

    void LerFigura(const QString &valor)
    {
        if (valor.contains(u'/') || valor.contains(u'\\'))
            Recusar(QStringLiteral("a picture is named without a path, found \"%1\"").arg(valor));
        m_receita.figura = valor;
    }

    void LerIngrediente(const QString &texto)
    {
        if (texto.isEmpty())
            return;
        const QStringList partes = texto.mid(1).split(u'|');
        if (!texto.startsWith(u'-') || partes.size() != 3)
            Recusar(QStringLiteral("expected \"- quantity | unit | ingredient\", found \"%1\"").arg(texto));
        const IngredienteExemplo linha{partes[0].trimmed(), partes[1].trimmed(), partes[2].trimmed()};
        if (linha.ingrediente.isEmpty())
            Recusar("the line names no ingredient");
        m_receita.ingredientes.append(linha);
    }

    void LerParagrafo(const QString &texto, QString &destino)
    {
        if (texto.isEmpty()) {
            m_novoParagrafo = true;
            return;
        }
        if (!destino.isEmpty())
            destino += m_novoParagrafo ? QStringLiteral("\r\n") : QStringLiteral(" ");
        destino += texto;
        m_novoParagrafo = false;
    }

    QString m_arquivo;
    int m_linha = 0;
    Secao m_secao = Secao::Campos;
    bool m_novoParagrafo = true;
    QSet<QString> m_vistos;
    ReceitaExemplo m_receita;
};
} // namespace

ErroExemplo::ErroExemplo(const QString &arquivo, int linha, const QString &motivo)
    : std::runtime_error((Local(arquivo, linha) + ": " + motivo).toStdString())
    , m_linha(linha)
{
}

ReceitaExemplo LeitorExemplos::Interpretar(const QByteArray &bytes, const QString &arquivo)
{
    Interprete interprete(arquivo);
    int numero = 0;
    for (const QByteArray &linha : bytes.split('\n')) {
        ++numero;
        QStringDecoder utf8(QStringDecoder::Utf8,
                            QStringDecoder::Flag::Stateless); // a cut sequence is an error
        const QString texto = utf8(linha);
        if (utf8.hasError())
            throw ErroExemplo(arquivo, numero, "not UTF-8 text");
        interprete.Linha(texto.trimmed());
    }
    return interprete.Terminar();
}

ReceitaExemplo LeitorExemplos::Ler(const QString &arquivo)
{
    QFile entrada(arquivo);
    if (!entrada.open(QIODevice::ReadOnly))
        throw ErroExemplo(arquivo, 0, entrada.errorString());
    const QByteArray bytes = entrada.readAll();
    if (entrada.error() != QFileDevice::NoError)
        throw ErroExemplo(arquivo, 0, entrada.errorString());
    return Interpretar(bytes, arquivo);
}

QList<ReceitaExemplo> LeitorExemplos::LerPasta(const QString &pasta)
{
    const QDir diretorio(pasta);
    const QStringList nomes = diretorio.entryList({"*.txt"}, QDir::Files, QDir::Name);
    if (nomes.isEmpty())
        throw ErroExemplo(pasta, 0, "the folder holds no recipes (*.txt)");
    QList<ReceitaExemplo> receitas;
    for (const QString &nome : nomes)
        receitas.append(Ler(diretorio.filePath(nome)));
    return receitas;
}
