#pragma once

#include "store/Comandos.h"

#include <QString>

#include <stdexcept>

/// A criterion of the search that cannot be used; its text is fit for the user.
class ErroCriterio : public std::runtime_error
{
public:
    explicit ErroCriterio(const QString &mensagem)
        : std::runtime_error(mensagem.toStdString())
    {
    }
};

/// Whether no criterion is filled. Blanks count as empty in the text fields, but not in the combo boxes.
bool SemCriterios(const Comandos::Pesquisa &criterios);

/// The calorie limit that the list applies: the whole part of the criterion, 0 when it is empty.
/// Throws ErroCriterio when the text is no number.
qint64 LimiteCalorias(const Comandos::Pesquisa &criterios);
