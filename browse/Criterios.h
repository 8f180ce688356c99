#pragma once

#include "base/Erro.h"
#include "store/Comandos.h"

#include <QString>

/// A criterion of the search that cannot be used; its text is fit for the user.
class ErroCriterio : public Erro
{
public:
    using Erro::Erro;
};

/// Whether no criterion is filled. Blanks count as empty in the text fields, but not in the combo boxes.
bool SemCriterios(const Comandos::Pesquisa &criterios);

/// The calorie limit that the list applies: the whole part of the criterion, 0 when it is empty.
/// Throws ErroCriterio when the text is no number.
qint64 LimiteCalorias(const Comandos::Pesquisa &criterios);
