#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <string_view>
#include <vector>

/**
 * The rows of a query: fully fetched, detached from the database, read-only, walked from first to last.
 *
 * A plain value; copies share their rows. All values lie in one arena, so that a quarter of a million rows
 * cost a few allocations. Values come out as QVariant: NULL is an invalid variant, whole numbers qint64,
 * other numbers double, text QString. Column names match without regard to case.
 */
class RecordSet
{
public:
    RecordSet() = default;

    int RecordCount() const;
    int FieldCount() const;
    QStringList FieldNames() const;
    /// Column of that name, or -1. Ask once before a long walk.
    int Campo(QStringView nome) const;
    int Campo(const char *nome) const { return Campo(QString::fromUtf8(nome)); }

    bool Eof() const { return m_linha >= RecordCount(); }
    void MoveNext() { ++m_linha; }
    void MoveFirst() { m_linha = 0; }

    /// Value in the current row. An unknown name or position, or a walk past the end, throws ErroBanco.
    QVariant Valor(QStringView nome) const;
    QVariant Valor(const char *nome) const { return Valor(QString::fromUtf8(nome)); }
    QVariant Valor(int campo) const;
    /// Value in any row, without moving.
    QVariant ValorEm(int linha, int campo) const;
    bool Nulo(int campo) const;

    /// Value as text, NULL as "" (numbers in the user's notation). The usual way into a control.
    QString Texto(QStringView nome) const;
    QString Texto(const char *nome) const { return Texto(QString::fromUtf8(nome)); }
    QString Texto(int campo) const;
    QString TextoEm(int linha, int campo) const;
    /// A text as it lies in the storage, for comparing without a copy; "" for what is no text. It lives as
    /// long as any copy of the record set.
    std::string_view Utf8Em(int linha, int campo) const;
    bool NuloEm(int linha, int campo) const;
    /// Values that are the same text, number or NULL in one column mostly have the same mark, different ones
    /// never.
    quint64 MarcaEm(int linha, int campo) const;
    /// A whole number, 0 for what is none.
    qint64 InteiroEm(int linha, int campo) const;

    /// The rows' storage, filled by the engine and shared by copies of the record set.
    struct Dados;
    /// @param ordem the rows that count, in their order; without one all, as they were fetched
    explicit RecordSet(std::shared_ptr<const Dados> dados,
                       std::shared_ptr<const std::vector<quint32>> ordem = {})
        : m_dados(std::move(dados))
        , m_ordem(std::move(ordem))
    {
    }
    /// Whether the rows stand otherwise than they were fetched.
    bool Reordenado() const { return m_ordem != nullptr; }

private:
    int Guardada(int linha, int campo) const;

    std::shared_ptr<const Dados> m_dados;
    std::shared_ptr<const std::vector<quint32>> m_ordem;
    int m_linha = 0;
};
