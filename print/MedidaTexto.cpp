#include "print/MedidaTexto.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace
{
// One em of the design. Most fonts are drawn on a grid of 2048 units, so no width is rounded.
constexpr int kEm = 2048;
constexpr double kMmPorPonto = 25.4 / 72.0;
// Recipes repeat their words; longer pieces are not worth keeping, nor is an endless list.
constexpr int kMaiorPalavra = 24;
constexpr size_t kMaisPalavras = 20000;
} // namespace

MedidaTexto::Tamanhos &MedidaTexto::Escolher(const Fonte &fonte) const
{
    if (m_atual && m_nomeAtual == fonte.nome && m_negritoAtual == fonte.negrito)
        return *m_atual;
    const QString chave = fonte.nome + (fonte.negrito ? u'+' : u'-');
    auto achada = m_fontes.find(chave);
    if (achada == m_fontes.end()) {
        QFont desenho(fonte.nome);
        desenho.setPixelSize(kEm);
        desenho.setBold(fonte.negrito);
        desenho.setHintingPreference(QFont::PreferNoHinting);
        const QFontMetricsF metrica(desenho);
        const double altura = metrica.ascent() + metrica.descent();
        achada = m_fontes.emplace(chave, Tamanhos{desenho, metrica.ascent(), altura, {}}).first;
    }
    m_nomeAtual = fonte.nome;
    m_negritoAtual = fonte.negrito;
    m_atual = &achada->second;
    return *m_atual;
}

double MedidaTexto::Largura(const Fonte &fonte, const QString &texto) const
{
    Tamanhos &tamanhos = Escolher(fonte);
    const double mmPorUnidade = fonte.pontos * kMmPorPonto / kEm;
    if (texto.size() > kMaiorPalavra)
        return QFontMetricsF(tamanhos.fonte).horizontalAdvance(texto) * mmPorUnidade;
    auto achada = tamanhos.larguras.find(texto);
    if (achada == tamanhos.larguras.end()) {
        if (tamanhos.larguras.size() >= kMaisPalavras)
            tamanhos.larguras.clear();
        achada =
            tamanhos.larguras.emplace(texto, QFontMetricsF(tamanhos.fonte).horizontalAdvance(texto)).first;
    }
    return achada->second * mmPorUnidade;
}

double MedidaTexto::Altura(const Fonte &fonte) const
{
    return Escolher(fonte).altura * fonte.pontos * kMmPorPonto / kEm;
}

double MedidaTexto::Subida(const Fonte &fonte) const
{
    return Escolher(fonte).subida * fonte.pontos * kMmPorPonto / kEm;
}

void PintarTexto(QPainter &painter, const MedidaTexto::Fonte &fonte, const QColor &cor, QPointF base,
                 const QString &texto, double unidadesPorMm)
{
    // Qt rounds a font's size to whole pixels, which makes it up to three percent wider or narrower; the rest
    // is made up by scaling around the run's own start.
    const double exato = fonte.pontos * kMmPorPonto * unidadesPorMm;
    const int inteiro = std::max(1, qRound(exato));
    const double escala = exato / inteiro;
    QFont pronta(fonte.nome);
    pronta.setPixelSize(inteiro);
    pronta.setBold(fonte.negrito);
    pronta.setHintingPreference(QFont::PreferNoHinting);
    painter.setFont(pronta);
    painter.setPen(cor);
    if (qFuzzyCompare(escala, 1.0)) {
        painter.drawText(base, texto);
        return;
    }
    const QTransform antes = painter.worldTransform();
    painter.translate(base);
    painter.scale(escala, escala);
    painter.drawText(QPointF(0, 0), texto);
    painter.setWorldTransform(antes);
}
