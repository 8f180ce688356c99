#include "browse/ModeloLista.h"

#include <limits>

ModeloLista::ModeloLista(QObject *parent)
    : QAbstractTableModel(parent)
    , m_marcador(":/marcador_foto.svg")
{
}

void ModeloLista::Preencher(LinhasLista linhas)
{
    beginResetModel();
    m_linhas = std::move(linhas);
    m_mostradas = m_linhas.Quantas();
    endResetModel();
}

void ModeloLista::Tomar(bool todas)
{
    constexpr int kTodas = std::numeric_limits<int>::max() / 2;
    constexpr int kVezesMais = 4;
    m_linhas.Tomar(kTodas);
    const int quantas = m_linhas.Quantas();
    if (quantas == m_mostradas || (!todas && quantas < kVezesMais * m_mostradas))
        return;
    beginInsertRows({}, m_mostradas, quantas - 1);
    m_mostradas = quantas;
    endInsertRows();
}

void ModeloLista::Substituir(LinhasLista linhas)
{
    emit layoutAboutToBeChanged();
    const QModelIndexList de = persistentIndexList();
    QList<qint64> receitas;
    for (const QModelIndex &indice : de)
        receitas += m_linhas.Receita(indice.row());
    m_linhas = std::move(linhas);
    m_mostradas = m_linhas.Quantas();
    QModelIndexList para;
    for (qsizetype i = 0; i < de.size(); ++i) {
        const int linha = m_linhas.Linha(receitas[i]);
        para += linha < 0 ? QModelIndex() : index(linha, de[i].column());
    }
    changePersistentIndexList(de, para);
    emit layoutChanged();
}

void ModeloLista::Ordenar(LinhasLista::Coluna coluna)
{
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const std::vector<int> antigos = m_linhas.Ordenar(coluna);
    std::vector<int> novos(antigos.size());
    for (std::size_t novo = 0; novo < antigos.size(); ++novo)
        novos[static_cast<std::size_t>(antigos[novo])] = static_cast<int>(novo);
    const QModelIndexList de = persistentIndexList();
    QModelIndexList para;
    para.reserve(de.size());
    for (const QModelIndex &indice : de)
        para.append(index(novos[static_cast<std::size_t>(indice.row())], indice.column()));
    changePersistentIndexList(de, para);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ModeloLista::Remover(int linha)
{
    beginRemoveRows({}, linha, linha);
    m_linhas.Remover(linha);
    --m_mostradas;
    endRemoveRows();
}

int ModeloLista::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_mostradas;
}

int ModeloLista::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : LinhasLista::kColunas;
}

QVariant ModeloLista::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int linha = index.row();
    switch (role) {
    case Qt::DisplayRole:
        return m_linhas.Texto(linha, static_cast<LinhasLista::Coluna>(index.column()));
    case Qt::DecorationRole:
        return index.column() == LinhasLista::Nome && m_linhas.TemFigura(linha) ? QVariant(m_marcador)
                                                                                : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter |
                        (index.column() == LinhasLista::Calorias ? Qt::AlignRight : Qt::AlignLeft));
    case kChave:
        return m_linhas.Chave(linha);
    case kTag:
        return m_linhas.Tag(linha);
    default:
        return {};
    }
}

QVariant ModeloLista::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter |
                        (section == LinhasLista::Calorias ? Qt::AlignRight : Qt::AlignLeft));
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case LinhasLista::Nome:
        return "Nome da Receita";
    case LinhasLista::Tipo:
        return "Tipo";
    case LinhasLista::Origem:
        return "Origem / Pacote";
    case LinhasLista::Preparo:
        return "Preparo";
    case LinhasLista::Calorias:
        return "Calorias";
    default:
        return {};
    }
}

Qt::ItemFlags ModeloLista::flags(const QModelIndex &index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
}
