#pragma once

#include "formatos/Receita.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

/// A recipe as schema.org describes it, with one key of our own that brings it back to the letter.
namespace Formatos
{
inline constexpr QLatin1String kChaveNossa("cozinhario");

/// The recipe for others: every key they know, no picture.
QJsonObject ParaSchema(const Receita &receita);
/// The key of our own: fields exactly as the book has them. `figura` is the name of the picture's file beside
/// it when that is not the copy "full.jpg", whose SHA-256 is then told too.
QJsonObject ChaveNossa(const Receita &receita, const QString &figura = {}, const QByteArray &sha256DaCopia = {});

/// The recipe in the key of our own; nothing when there is no such key, or one of a later version.
std::optional<Receita> ReceitaExata(const QJsonObject &objeto);
/// The keys whose visible value is no longer what we would write of `exata`.
QStringList CamposTocados(const Receita &exata, const QJsonObject &objeto);
/// Every field of `exata` whose key was not touched, into `receita`.
void DevolverExatos(const Receita &exata, const QStringList &tocados, Receita &receita);

struct FiguraExata {
    QString nome;
    QByteArray sha256DaCopia;
};
FiguraExata FiguraNossa(const QJsonObject &objeto);
} // namespace Formatos
