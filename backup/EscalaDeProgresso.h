#pragma once

#include <QtGlobal>

/**
 * The restore's progress scale: the bar ends below 32001, however long the archive.
 *
 * The divisor grows tenfold from 10 and divides what the round before left over, so the division compounds:
 * 4 000 000 becomes 40 000 in the first round and 40 in the second, with a divisor of 1000. Meant so, as is
 * the divisor of 10 for an archive that needs no round: its entries fill a tenth of the bar.
 */
struct EscalaDeProgresso {
    explicit EscalaDeProgresso(qint64 tamanho);

    int total;
    qint64 divisor = 10;
};
