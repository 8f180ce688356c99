#include "store/access/tests/Esperado.h"

#include "store/Banco.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{
/// The value under a key, letter case aside.
QJsonValue Pegar(const QJsonObject &objeto, const QString &chave)
{
    for (auto it = objeto.begin(); it != objeto.end(); ++it)
        if (it.key().compare(chave, Qt::CaseInsensitive) == 0)
            return it.value();
    return QJsonValue(QJsonValue::Undefined);
}

template <typename T>
QVariant Valor(const std::optional<T> &valor)
{
    return valor ? QVariant(*valor) : QVariant();
}

QVariantMap Linha(const LivroAccess::Receita &r)
{
    return {{"id_receitas", r.id_receitas},  {"Nome", Valor(r.Nome)},
            {"Data", Valor(r.Data)},         {"Classificacao", Valor(r.Classificacao)},
            {"Modo", Valor(r.Modo)},         {"Tipo", Valor(r.Tipo)},
            {"Origem", Valor(r.Origem)},     {"Porcoes", Valor(r.Porcoes)},
            {"Preparo", Valor(r.Preparo)},   {"Tipo_Calorias", Valor(r.Tipo_Calorias)},
            {"Calorias", Valor(r.Calorias)}, {"Observacao", Valor(r.Observacao)},
            {"Figura", Valor(r.Figura)}};
}

QVariantMap Linha(const LivroAccess::Ingrediente &i)
{
    return {{"id_ingredientes", i.id_ingredientes},
            {"id_receitas", Valor(i.id_receitas)},
            {"Ingrediente", Valor(i.Nome)},
            {"Quantidade", Valor(i.Quantidade)},
            {"Unidade", Valor(i.Unidade)}};
}

QList<QVariantMap> Ler(const Banco &banco, const QString &sql)
{
    QList<QVariantMap> linhas;
    for (RecordSet rs = banco.AbrirRecordset(sql); !rs.Eof(); rs.MoveNext()) {
        QVariantMap linha;
        const QStringList nomes = rs.FieldNames();
        for (const QString &nome : nomes)
            linha[nome] = rs.Valor(nome);
        linhas += linha;
    }
    return linhas;
}

QVariant ValorEsperado(const QString &coluna, const QJsonValue &valor)
{
    if (valor.isNull() || valor.isUndefined())
        return {};
    if (coluna != "Data")
        return valor.toVariant();
    QString data = valor.toString().replace('T', ' ');
    return data.endsWith(" 00:00:00") ? data.chopped(9) : data;
}

bool Igual(const QVariant &achado, const QVariant &esperado)
{
    if (achado.isValid() != esperado.isValid())
        return false;
    if (!achado.isValid())
        return true;
    const bool texto = achado.typeId() == QMetaType::QString;
    if (texto != (esperado.typeId() == QMetaType::QString))
        return false;
    return texto ? achado.toString() == esperado.toString() : achado.toDouble() == esperado.toDouble();
}

QString Mostrar(const QVariant &valor)
{
    return valor.isValid() ? "\"" + valor.toString().left(200) + "\"" : QString("NULL");
}

void CompararTabela(const QString &tabela, const QString &chave, const QList<QVariantMap> &achadas,
                    const QJsonObject &raiz, QStringList &diferencas)
{
    const QJsonValue esperadas = Pegar(raiz, tabela);
    if (!esperadas.isArray()) {
        diferencas += "esperado.json não tem " + tabela;
        return;
    }
    const QJsonArray linhas = esperadas.toArray();
    if (linhas.size() != achadas.size())
        diferencas +=
            QString("%1: %2 linhas em vez de %3").arg(tabela).arg(achadas.size()).arg(linhas.size());
    for (qsizetype i = 0; i < qMin(linhas.size(), achadas.size()); ++i) {
        const QJsonObject linha = linhas[i].toObject();
        const QVariantMap &achada = achadas[i];
        for (auto it = achada.begin(); it != achada.end(); ++it) {
            const QVariant esperado = ValorEsperado(it.key(), Pegar(linha, it.key()));
            if (!Igual(it.value(), esperado))
                diferencas += QString("%1 %2, %3: %4 em vez de %5")
                                  .arg(tabela, achada[chave].toString(), it.key(), Mostrar(it.value()),
                                       Mostrar(esperado));
        }
    }
}
} // namespace

Esperado::Esperado(const QString &caminho)
{
    QFile arquivo(caminho);
    if (arquivo.open(QIODevice::ReadOnly))
        m_raiz = QJsonDocument::fromJson(arquivo.readAll()).object();
}

qint64 Esperado::MaiorNumero(const char *chave) const
{
    return m_raiz["next_numbers"].toObject()[QLatin1String(chave)].toInteger(-1);
}

QStringList Esperado::Comparar(const Linhas &receitas, const Linhas &ingredientes) const
{
    QStringList diferencas;
    CompararTabela("Receitas", "id_receitas", receitas, m_raiz, diferencas);
    CompararTabela("Ingredientes", "id_ingredientes", ingredientes, m_raiz, diferencas);
    return diferencas;
}

QStringList Esperado::Diferencas(const LivroAccess &livro) const
{
    Linhas receitas;
    for (const LivroAccess::Receita &receita : livro.receitas)
        receitas += Linha(receita);
    Linhas ingredientes;
    for (const LivroAccess::Ingrediente &ingrediente : livro.ingredientes)
        ingredientes += Linha(ingrediente);
    QStringList diferencas = Comparar(receitas, ingredientes);
    if (livro.ultimaReceita != MaiorNumero("id_receitas_highest_ever"))
        diferencas += QString("último número de receita: %1").arg(livro.ultimaReceita);
    if (livro.ultimoIngrediente != MaiorNumero("id_ingredientes_highest_ever"))
        diferencas += QString("último número de ingrediente: %1").arg(livro.ultimoIngrediente);
    return diferencas;
}

QStringList Esperado::Diferencas(const Banco &banco) const
{
    QStringList diferencas = Comparar(Ler(banco, "Select * from Receitas Order By id_receitas"),
                                      Ler(banco, "Select * from Ingredientes Order By id_ingredientes"));
    banco.ExecutarSQL("Insert into Receitas(Nome) values ('Nova')");
    banco.ExecutarSQL("Insert into Ingredientes(id_receitas,Ingrediente) values (1,'Novo')");
    const qint64 receita =
        banco.AbrirRecordset("Select max(id_receitas) from Receitas").Valor(0).toLongLong();
    const qint64 linha =
        banco.AbrirRecordset("Select max(id_ingredientes) from Ingredientes").Valor(0).toLongLong();
    if (receita <= MaiorNumero("id_receitas_highest_ever"))
        diferencas += QString("a nova receita recebeu o número %1").arg(receita);
    if (linha <= MaiorNumero("id_ingredientes_highest_ever"))
        diferencas += QString("a nova linha recebeu o número %1").arg(linha);
    return diferencas;
}
