#pragma once

#include <QString>

/**
 * The picture's state, kept in the tag of `imgFigura`: one of the two words below, or the full native path of
 * a picture file that the user has chosen and not saved yet.
 */
namespace EstadoFigura
{
/// The recipe has no picture: none was chosen, or the user cleared it.
inline const QString kNada = QStringLiteral("NADA");
/// The recipe keeps the picture it already has.
inline const QString kAntiga = QStringLiteral("OLD");

inline bool Nova(const QString &tag)
{
    return tag != kNada && tag != kAntiga;
}
} // namespace EstadoFigura
