#pragma once

#include <QDate>
#include <QDateTime>

/// Where "today" comes from; tests hand in a clock that stands still.
class Relogio
{
public:
    virtual ~Relogio() = default;
    virtual QDateTime Agora() const = 0;
    QDate Hoje() const { return Agora().date(); }
};

class RelogioDoSistema : public Relogio
{
public:
    QDateTime Agora() const override { return QDateTime::currentDateTime(); }
};
