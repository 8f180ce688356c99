#pragma once

#include <QRandomGenerator>

/// Where chance comes from; tests hand in the number they want.
class Sorteio
{
public:
    virtual ~Sorteio() = default;

    /// A number in [0, 1).
    virtual double Sortear() = 0;
};

class SorteioDoSistema : public Sorteio
{
public:
    double Sortear() override { return QRandomGenerator::system()->generateDouble(); }
};
