#pragma once

#include <QObject>

/**
 * Lets access keys press their button at once. Qt shows the button held down for a tenth of a second first
 * and acts only then, so that a fast typist's next key would overtake the last one. Install it on the
 * application.
 */
class AtalhoImediato : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *objeto, QEvent *event) override;
};
