#include "print/frmImpressao.h"

#include "base/CampoTexto.h"
#include "base/Fontes.h"
#include "base/Texto.h"
#include "print/Impressoras.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr int kMaisCopias = 999;

// A step of loading or confirming that fails is skipped and the next one runs; nothing is reported.
template <typename F>
void Tentar(F &&passo)
{
    try {
        std::forward<F>(passo)();
    } catch (const std::exception &) {
    }
}

QGroupBox *NovoQuadro(const QString &nome, const QString &titulo)
{
    auto *quadro = new QGroupBox(titulo);
    quadro->setObjectName(nome);
    quadro->setAccessibleName(Aparar(titulo));
    return quadro;
}

/// A little sheet, upright or lying.
QIcon IconeFolha(bool deitada, const QColor &traco, const QColor &papel)
{
    QPixmap desenho(64, 64);
    desenho.fill(Qt::transparent);
    QPainter painter(&desenho);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(32, 32);
    if (deitada)
        painter.rotate(-90);
    painter.setPen(QPen(traco, 4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(papel);
    painter.drawPolygon(QPolygonF({{-20, -27}, {8, -27}, {20, -15}, {20, 27}, {-20, 27}}));
    painter.drawPolyline(QPolygonF({{8, -27}, {8, -15}, {20, -15}}));
    return QIcon(desenho);
}
} // namespace

frmImpressao::frmImpressao(const Impressoras &impressoras, ImpressoraAtual &atual, QWidget *parent)
    : QDialog(parent)
    , m_impressoras(impressoras)
    , m_atual(atual)
{
    setObjectName(QStringLiteral("frmImpressao"));
    setWindowTitle(QStringLiteral("Impressão da Receita"));
    setAccessibleName(windowTitle());
    setFont(FonteVerdana(8.25));
    Montar();
    Carregar();
    for (QWidget *controle : findChildren<QWidget *>())
        controle->installEventFilter(this);
}

QRadioButton *frmImpressao::NovaOpcao(const QString &nome, const QString &texto, const QString &dica)
{
    auto *opcao = new QRadioButton(texto);
    opcao->setObjectName(nome);
    opcao->setAccessibleName(texto);
    opcao->setToolTip(dica);
    return opcao;
}

void frmImpressao::Montar()
{
    auto *fraSelImpressora =
        NovoQuadro(QStringLiteral("fraSelImpressora"), QStringLiteral(" Selecionar Impressora "));
    cmbImpressora = new QComboBox;
    cmbImpressora->setObjectName(QStringLiteral("cmbImpressora"));
    cmbImpressora->setAccessibleName(QStringLiteral("Impressora"));
    cmbImpressora->setToolTip(QStringLiteral("Impressora que Imprime a Receita"));
    cmbImpressora->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto *linhaImpressora = new QHBoxLayout(fraSelImpressora);
    linhaImpressora->addWidget(cmbImpressora);

    auto *fraOrientacao = NovoQuadro(QStringLiteral("fraOrientacao"), QStringLiteral(" Orientação "));
    optRetrato =
        NovaOpcao(QStringLiteral("optRetrato"), QStringLiteral("Retrato"), QStringLiteral("Folha em Pé"));
    optPaisagem =
        NovaOpcao(QStringLiteral("optPaisagem"), QStringLiteral("Paisagem"), QStringLiteral("Folha Deitada"));
    const QColor traco = palette().color(QPalette::WindowText);
    const QColor papel = palette().color(QPalette::Base);
    optRetrato->setIcon(IconeFolha(false, traco, papel));
    optPaisagem->setIcon(IconeFolha(true, traco, papel));
    auto *gradeOrientacao = new QGridLayout(fraOrientacao);
    gradeOrientacao->addWidget(optRetrato, 0, 0);
    gradeOrientacao->addWidget(optPaisagem, 1, 0);

    auto *fraQualidade =
        NovoQuadro(QStringLiteral("fraQualidade"), QStringLiteral(" Configuração da Qualidade "));
    optRascunho = NovaOpcao(QStringLiteral("optRascunho"), QStringLiteral("Rascunho"),
                            QStringLiteral("A mais Rápida, Gasta pouca Tinta"));
    optBaixa =
        NovaOpcao(QStringLiteral("optBaixa"), QStringLiteral("Baixa"), QStringLiteral("Qualidade Baixa"));
    optNormal =
        NovaOpcao(QStringLiteral("optNormal"), QStringLiteral("Normal"), QStringLiteral("Qualidade Normal"));
    optOtima = NovaOpcao(QStringLiteral("optOtima"), QStringLiteral("Ótima"),
                         QStringLiteral("A melhor Qualidade, mais Lenta"));
    auto *gradeQualidade = new QGridLayout(fraQualidade);
    gradeQualidade->addWidget(optRascunho, 0, 0);
    gradeQualidade->addWidget(optBaixa, 1, 0);
    gradeQualidade->addWidget(optNormal, 0, 1);
    gradeQualidade->addWidget(optOtima, 1, 1);

    auto *fraCor = NovoQuadro(QStringLiteral("fraCor"), QStringLiteral(" Cor "));
    optPretoBranco = NovaOpcao(QStringLiteral("optPretoBranco"), QStringLiteral("Preto e Branco"),
                               QStringLiteral("Imprime só com Tinta Preta"));
    optColorido = NovaOpcao(QStringLiteral("optColorido"), QStringLiteral("Colorido"),
                            QStringLiteral("Imprime em Cores"));
    auto *gradeCor = new QGridLayout(fraCor);
    gradeCor->addWidget(optPretoBranco, 0, 0);
    gradeCor->addWidget(optColorido, 1, 0);

    auto *fraCopias = NovoQuadro(QStringLiteral("fraCopias"), QStringLiteral(" Cópias "));
    auto *lblGeral = new QLabel(QStringLiteral("Número :"));
    lblGeral->setObjectName(QStringLiteral("lblGeral"));
    txtCopies = new CampoTexto(QStringLiteral("txtCopies"), nullptr, true);
    txtCopies->setAccessibleName(QStringLiteral("Número de cópias"));
    txtCopies->setToolTip(QStringLiteral("Número de Cópias"));
    txtCopies->setAlignment(Qt::AlignRight);
    txtCopies->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000")));
    lblGeral->setBuddy(txtCopies);
    VScrllCopia = new QScrollBar(Qt::Vertical);
    VScrllCopia->setObjectName(QStringLiteral("VScrllCopia"));
    VScrllCopia->setAccessibleName(QStringLiteral("Mais ou menos cópias"));
    VScrllCopia->setToolTip(QStringLiteral("Aumenta ou Diminui o Número de Cópias"));
    // Some styles draw scroll bars without arrows; here the arrows are all there is.
    if (QStyle *fusion = QStyleFactory::create(QStringLiteral("Fusion"))) {
        fusion->setParent(VScrllCopia);
        VScrllCopia->setStyle(fusion);
    }
    VScrllCopia->setFixedHeight(txtCopies->sizeHint().height());
    auto *gradeCopias = new QHBoxLayout(fraCopias);
    gradeCopias->addWidget(lblGeral);
    gradeCopias->setSpacing(1); // field and arrows are one control to the eye
    gradeCopias->addSpacing(8);
    gradeCopias->addWidget(txtCopies);
    gradeCopias->addWidget(VScrllCopia);
    gradeCopias->addStretch(1);

    auto *cmdImprimir = new QPushButton(QStringLiteral("&Imprimir"));
    cmdImprimir->setObjectName(QStringLiteral("cmdImprimir"));
    cmdImprimir->setAccessibleName(QStringLiteral("Imprimir"));
    cmdImprimir->setToolTip(QStringLiteral("Imprime com estas Opções"));
    cmdImprimir->setDefault(true);
    auto *cmdCancelar = new QPushButton(QStringLiteral("&Cancelar"));
    cmdCancelar->setObjectName(QStringLiteral("cmdCancelar"));
    cmdCancelar->setAccessibleName(QStringLiteral("Cancelar"));
    cmdCancelar->setToolTip(QStringLiteral("Fecha sem Imprimir"));
    auto *botoes = new QHBoxLayout;
    botoes->setSpacing(8);
    botoes->addStretch(1);
    botoes->addWidget(cmdImprimir);
    botoes->addWidget(cmdCancelar);
    for (QPushButton *botao : {cmdImprimir, cmdCancelar})
        botao->setMinimumSize(96, 28);

    auto *grade = new QGridLayout(this);
    grade->setContentsMargins(14, 14, 14, 14);
    grade->setHorizontalSpacing(12);
    grade->setVerticalSpacing(10);
    grade->addWidget(fraSelImpressora, 0, 0, 1, 2);
    grade->addWidget(fraOrientacao, 1, 0);
    grade->addWidget(fraQualidade, 1, 1);
    grade->addWidget(fraCor, 2, 0);
    grade->addWidget(fraCopias, 2, 1);
    grade->addLayout(botoes, 3, 0, 1, 2);
    grade->setColumnStretch(0, 1);
    grade->setColumnStretch(1, 1);
    grade->setColumnMinimumWidth(0, 215);
    grade->setColumnMinimumWidth(1, 215);
    grade->setSizeConstraint(QLayout::SetFixedSize);

    QWidget *anterior = cmbImpressora;
    for (QWidget *controle :
         std::initializer_list<QWidget *>{optRetrato, optPaisagem, optRascunho, optBaixa, optNormal, optOtima,
                                          optPretoBranco, optColorido, txtCopies, cmdImprimir, cmdCancelar}) {
        setTabOrder(anterior, controle);
        anterior = controle;
    }

    connect(cmdImprimir, &QPushButton::clicked, this, &frmImpressao::Imprimir);
    connect(cmdCancelar, &QPushButton::clicked, this, &frmImpressao::reject);
    connect(txtCopies, &QLineEdit::textChanged, this, &frmImpressao::AcertarBarra);
    // Upside down on purpose: the upper arrow lowers the bar's value and raises the count.
    connect(VScrllCopia, &QScrollBar::valueChanged, this,
            [this](int valor) { MudarCopias(valor < m_valorDaBarra ? 1 : -1); });
    // At its end the bar does not move any more, though the count still may.
    connect(VScrllCopia, &QScrollBar::actionTriggered, this, [this](int acao) {
        if (acao == QScrollBar::SliderSingleStepAdd && VScrllCopia->value() == VScrllCopia->maximum())
            MudarCopias(-1);
        else if (acao == QScrollBar::SliderSingleStepSub && VScrllCopia->value() == VScrllCopia->minimum())
            MudarCopias(1);
    });
}

void frmImpressao::Carregar()
{
    m_indice = -1;
    cmbImpressora->clear();
    cmbImpressora->setPlaceholderText(QStringLiteral("O serviço de impressão não responde"));
    Tentar([this] {
        cmbImpressora->addItems(m_impressoras.Nomes());
        cmbImpressora->setPlaceholderText(
            cmbImpressora->count() == 0 ? QStringLiteral("Nenhuma impressora instalada") : QString());
    });
    if (cmbImpressora->count() == 0) { // what stands in the printers' place is none of them
        QPalette cinza = cmbImpressora->palette();
        cinza.setColor(QPalette::Text, cinza.color(QPalette::PlaceholderText));
        cmbImpressora->setPalette(cinza);
    }
    cmbImpressora->setCurrentIndex(
        cmbImpressora->findText(m_atual.DeviceName, Qt::MatchExactly | Qt::MatchCaseSensitive));

    txtCopies->setText(QString::number(m_atual.Copies));
    if (NumeroDeCopias() == 0)
        txtCopies->setText(QStringLiteral("1"));

    optRetrato->setChecked(true);
    if (m_atual.Orientation == 2)
        optPaisagem->setChecked(true);

    optBaixa->setChecked(true); // stays for a quality given as a resolution
    if (m_atual.PrintQuality == -1)
        optRascunho->setChecked(true);
    else if (m_atual.PrintQuality == -3)
        optNormal->setChecked(true);
    else if (m_atual.PrintQuality == -4)
        optOtima->setChecked(true);

    optPretoBranco->setChecked(true);
    if (m_atual.ColorMode == 2)
        optColorido->setChecked(true);

    // The Tab key enters a group of options at the chosen one.
    for (QRadioButton *opcao : findChildren<QRadioButton *>())
        opcao->setFocusPolicy(opcao->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);

    {
        const QSignalBlocker calada(VScrllCopia);
        VScrllCopia->setMaximum(kMaisCopias);
        VScrllCopia->setValue(1);
        VScrllCopia->setMinimum(0);
    }
    AcertarBarra();
    txtCopies->selectAll();
}

int frmImpressao::NumeroDeCopias() const
{
    const double numero = std::trunc(Val(txtCopies->text()));
    constexpr double limite = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(numero, -limite, limite));
}

/// Keeps the bar at the number of copies, as far as it reaches, whoever changed the number.
void frmImpressao::AcertarBarra()
{
    const QSignalBlocker calada(VScrllCopia);
    VScrllCopia->setValue(NumeroDeCopias());
    m_valorDaBarra = VScrllCopia->value();
}

void frmImpressao::MudarCopias(int passo)
{
    const int n = NumeroDeCopias();
    // The arrows stop at 1 and at 999; a number typed beyond them goes on from where it is.
    if (passo < 0 && n != 1)
        txtCopies->setText(QString::number(n - 1));
    else if (passo > 0 && n != kMaisCopias)
        txtCopies->setText(QString::number(n + 1));
    AcertarBarra();
}

void frmImpressao::Imprimir()
{
    m_indice = static_cast<qint16>(cmbImpressora->currentIndex());
    if (m_indice >= 0) {
        // One that has vanished meanwhile stays the chosen one: the job says by its name what became of it.
        const QString escolhida = cmbImpressora->currentText();
        Tentar([&] { m_atual = m_impressoras.Configuracao(escolhida); });
        m_atual.DeviceName = escolhida;
    } else if (m_atual.DeviceName.isEmpty()) { // no printer that could take a setting
        accept();
        return;
    }
    // A printer takes a 16-bit count of at least one; any other is a setting it rejects.
    const int copias = NumeroDeCopias();
    if (copias >= 1 && copias <= std::numeric_limits<qint16>::max())
        m_atual.Copies = copias;
    m_atual.Orientation = optRetrato->isChecked() ? 1 : 2;
    if (optRascunho->isChecked())
        m_atual.PrintQuality = -1;
    else if (optBaixa->isChecked())
        m_atual.PrintQuality = -2;
    else if (optNormal->isChecked())
        m_atual.PrintQuality = -3;
    else if (optOtima->isChecked())
        m_atual.PrintQuality = -4;
    m_atual.ColorMode = optPretoBranco->isChecked() ? 1 : 2;
    accept();
}

/// The dialog sees key presses before its controls.
bool frmImpressao::eventFilter(QObject *observado, QEvent *evento)
{
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent *>(evento)->key();
        if (tecla == Qt::Key_Escape) {
            reject();
            return true;
        }
        if (observado == txtCopies && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
            Imprimir(); // the field would swallow the default button's key
            return true;
        }
    }
    return QDialog::eventFilter(observado, evento);
}
