#include "base/ModeloDeItens.h"

void ModeloDeItens::Trocar(std::shared_ptr<FonteDeItens> fonte, bool comVazio)
{
    // Not a reset: that would make the combo box empty its field, and its view count the rows at once.
    emit layoutAboutToBeChanged();
    m_fonte = std::move(fonte);
    m_comVazio = comVazio;
    m_acrescentados = FonteDeTextos();
    const QModelIndexList antigos = persistentIndexList();
    changePersistentIndexList(antigos, QModelIndexList(antigos.size()));
    emit layoutChanged();
}

void ModeloDeItens::Acrescentar(const QString &item)
{
    const int linha = rowCount();
    beginInsertRows({}, linha, linha);
    m_acrescentados.Acrescentar(item);
    endInsertRows();
}

int ModeloDeItens::Procurar(QStringView prefixo) const
{
    if (const int achado = m_fonte->Procurar(prefixo); achado >= 0)
        return achado + (m_comVazio ? 1 : 0);
    const int achado = m_acrescentados.Procurar(prefixo);
    return achado < 0 ? -1 : DaFonte() + achado;
}

bool ModeloDeItens::Contem(const QString &valor) const
{
    return (m_comVazio && valor.isEmpty()) || m_fonte->Contem(valor) || m_acrescentados.Contem(valor);
}

int ModeloDeItens::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || m_semEsperar ? 0 : DaFonte() + m_acrescentados.Quantos();
}

QVariant ModeloDeItens::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    int linha = index.row();
    if (m_comVazio && linha-- == 0)
        return QString();
    const int daFonte = m_fonte->Quantos();
    return linha < daFonte ? m_fonte->Item(linha) : m_acrescentados.Item(linha - daFonte);
}
