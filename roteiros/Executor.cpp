#include "Executor.h"

#include "Fotografia.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

namespace
{
using Resultado = Executor::Resultado;

QWidget *Controle(const QString &nome)
{
    QWidget *oculto = nullptr;
    const QWidget *modal = QApplication::activeModalWidget();
    const auto todos = QApplication::allWidgets();
    for (QWidget *controle : todos) {
        if (controle->objectName() != nome)
            continue;
        if (controle->isVisible() && (!modal || controle->window() == modal))
            return controle;
        oculto = controle;
    }
    return oculto;
}

// Where a user's click would land: the control must be shown, unblocked and not covered by another.
bool Alcancavel(QWidget *controle, QPoint onde, QString &motivo)
{
    if (!controle || !controle->isVisible()) {
        motivo = "não está visível";
        return false;
    }
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal && controle->window() != modal && !QApplication::activePopupWidget()) {
        motivo = "está atrás de um diálogo";
        return false;
    }
    QWidget *janela = controle->window();
    const QPoint naJanela = controle->mapTo(janela, onde);
    const QWidget *atingido = janela->childAt(naJanela);
    if (atingido && atingido != controle && !controle->isAncestorOf(atingido)) {
        motivo = "está coberto por " + atingido->objectName();
        return false;
    }
    return true;
}

void ClicarEm(QWidget *controle, QPoint onde, Qt::MouseButton botao = Qt::LeftButton, bool duplo = false,
              Qt::KeyboardModifiers teclas = {})
{
    QWidget *janela = controle->window();
    const QPoint naJanela = controle->mapTo(janela, onde);
    QWindow *alvo = janela->windowHandle();
    QTest::mouseMove(alvo, naJanela);
    if (duplo)
        QTest::mouseDClick(alvo, botao, teclas, naJanela);
    else
        QTest::mouseClick(alvo, botao, teclas, naJanela);
}

// The window that is no dialog.
QWidget *JanelaPrincipal()
{
    const auto janelas = QApplication::topLevelWidgets();
    for (QWidget *janela : janelas)
        if (janela->isVisible() && janela->windowType() == Qt::Window && !janela->objectName().isEmpty())
            return janela;
    return nullptr;
}

QWindow *JanelaDoTeclado()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->windowHandle();
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal->windowHandle();
    QWidget *foco = QApplication::focusWidget();
    QWidget *janela = foco ? foco->window() : QApplication::activeWindow();
    if (!janela)
        janela =
            JanelaPrincipal(); // platforms without a window manager activate nothing when a dialog closes
    return janela ? janela->windowHandle() : nullptr;
}

void DigitarTexto(QWindow *janela, const QString &texto)
{
    for (const QChar c : texto) {
        const Qt::Key tecla = c == u'\n' ? Qt::Key_Return : static_cast<Qt::Key>(c.toUpper().unicode());
        const QString escrito = c == u'\n' ? QString("\r") : QString(c);
        QTest::sendKeyEvent(QTest::Click, janela, tecla, escrito,
                            c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
    }
}

QModelIndex Linha(const QAbstractItemView *vista, const QModelIndex &pai, const QString &texto)
{
    const QAbstractItemModel *modelo = vista->model();
    for (int i = 0; i < modelo->rowCount(pai); ++i) {
        const QModelIndex indice = modelo->index(i, 0, pai);
        if (indice.data().toString() == texto)
            return indice;
        const QModelIndex abaixo = Linha(vista, indice, texto);
        if (abaixo.isValid())
            return abaixo;
    }
    return {};
}

QString TextoDe(QWidget *controle)
{
    if (auto *combo = qobject_cast<QComboBox *>(controle))
        return combo->currentText();
    if (auto *memo = qobject_cast<QPlainTextEdit *>(controle))
        return memo->toPlainText();
    return controle->property("text").toString();
}
} // namespace

Resultado Executor::Executar(const Comando &comando, QString &motivo)
{
    const QString &verbo = comando.verbo;
    if (verbo == "clique" || verbo == "duplo-clique" || verbo == "clique-direito" || verbo == "aponte")
        return Clicar(comando, motivo);
    if (verbo == "clique-linha" || verbo == "duplo-clique-linha" || verbo == "junte-linha" ||
        verbo == "menu-linha")
        return ClicarLinha(comando, motivo);
    if (verbo == "digite" || verbo == "digite-aqui" || verbo == "tecla")
        return Digitar(comando, motivo);
    if (verbo == "cole")
        return Colar(comando, motivo);
    if (verbo == "arquivo")
        return Arquivo(comando, motivo);
    if (verbo == "responda")
        return Responder(comando, motivo);
    if (verbo == "escolha")
        return Escolher(comando, motivo);
    if (verbo == "espere" || verbo == "confira")
        return Conferir(comando, motivo);
    if (verbo == "foto" || verbo == "foto-com-dialogos")
        return Fotografar(comando, motivo);
    if (verbo == "foto-em-andamento")
        return FotografarEmAndamento(comando, motivo);
    if (verbo == "guarde")
        return Guardar(comando, motivo);
    motivo = "verbo desconhecido";
    return Resultado::Falhou;
}

Resultado Executor::Clicar(const Comando &comando, QString &motivo)
{
    QWidget *controle = Controle(comando.Argumento(0));
    if (!controle) {
        motivo = "não existe";
        return Resultado::AindaNao;
    }
    // Check boxes and option buttons answer on their text, not on the whole width a layout gave them.
    QPoint onde = controle->rect().center();
    if (qobject_cast<QAbstractButton *>(controle) && controle->width() > 3 * controle->height())
        onde.setX(std::min(onde.x(), 40));
    if (!Alcancavel(controle, onde, motivo))
        return Resultado::AindaNao;
    if (comando.verbo == "aponte")
        QTest::mouseMove(controle->window()->windowHandle(), controle->mapTo(controle->window(), onde));
    else
        ClicarEm(controle, onde, comando.verbo == "clique-direito" ? Qt::RightButton : Qt::LeftButton,
                 comando.verbo == "duplo-clique");
    return Resultado::Feito;
}

Resultado Executor::ClicarLinha(const Comando &comando, QString &motivo)
{
    auto *vista = qobject_cast<QAbstractItemView *>(Controle(comando.Argumento(0)));
    const QModelIndex linha = vista ? Linha(vista, {}, comando.Argumento(1)) : QModelIndex();
    if (!linha.isValid()) {
        motivo = "não tem essa linha";
        return Resultado::AindaNao;
    }
    vista->scrollTo(linha);
    const QRect area = vista->visualRect(linha);
    const QPoint onde(area.left() + std::min(20, area.width() / 2), area.center().y());
    if (!Alcancavel(vista->viewport(), onde, motivo))
        return Resultado::AindaNao;
    const bool duplo = comando.verbo == "duplo-clique-linha";
    if (duplo)
        ClicarEm(vista->viewport(), onde);
    ClicarEm(vista->viewport(), onde, comando.verbo == "menu-linha" ? Qt::RightButton : Qt::LeftButton, duplo,
             comando.verbo == "junte-linha" ? Qt::ControlModifier : Qt::NoModifier);
    return Resultado::Feito;
}

Resultado Executor::Digitar(const Comando &comando, QString &motivo)
{
    if (comando.verbo == "digite") {
        QWidget *controle = Controle(comando.Argumento(0));
        if (!controle || !Alcancavel(controle, controle->rect().center(), motivo))
            return Resultado::AindaNao;
        ClicarEm(controle, QPoint(controle->width() / 3, controle->height() / 2));
        QTest::keyClick(controle->window()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(controle->window()->windowHandle(), Qt::Key_Delete);
        DigitarTexto(controle->window()->windowHandle(), comando.Argumento(1));
        return Resultado::Feito;
    }
    QWindow *janela = JanelaDoTeclado();
    if (!janela) {
        motivo = "nenhuma janela tem o teclado";
        return Resultado::AindaNao;
    }
    if (comando.verbo == "digite-aqui") {
        DigitarTexto(janela, comando.Argumento(0));
        return Resultado::Feito;
    }
    const QKeySequence teclas(comando.Argumento(0));
    if (teclas.isEmpty()) {
        motivo = "tecla desconhecida";
        return Resultado::Falhou;
    }
    QTest::keyClick(janela, teclas[0].key(), teclas[0].keyboardModifiers());
    return Resultado::Feito;
}

Resultado Executor::Colar(const Comando &comando, QString &motivo)
{
    QWidget *controle = Controle(comando.Argumento(0));
    if (!controle || !Alcancavel(controle, controle->rect().center(), motivo))
        return Resultado::AindaNao;
    QGuiApplication::clipboard()->setText(comando.Argumento(1));
    ClicarEm(controle, QPoint(controle->width() / 3, controle->height() / 2));
    QWindow *janela = controle->window()->windowHandle();
    QTest::keyClick(janela, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(janela, Qt::Key_V, Qt::ControlModifier);
    return Resultado::Feito;
}

Resultado Executor::Arquivo(const Comando &comando, QString &motivo)
{
    auto *dialogo = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
    auto *campo = dialogo ? dialogo->findChild<QLineEdit *>("fileNameEdit") : nullptr;
    if (!campo || !campo->isVisible()) {
        motivo = "nenhuma escolha de arquivo está aberta";
        return Resultado::AindaNao;
    }
    // Typed letter by letter, the dialog's list of suggestions would take the Enter.
    campo->setFocus();
    campo->setText(comando.Argumento(0));
    QTest::keyClick(dialogo->windowHandle(), Qt::Key_Return);
    return Resultado::Feito;
}

Resultado Executor::Responder(const Comando &comando, QString &motivo)
{
    QWidget *dialogo = QApplication::activeModalWidget();
    if (!dialogo || !dialogo->isVisible()) {
        motivo = "nenhum diálogo está aberto";
        return Resultado::AindaNao;
    }
    const auto botoes = dialogo->findChildren<QAbstractButton *>();
    for (QAbstractButton *botao : botoes) {
        QString texto = botao->text();
        if (texto.remove('&') == comando.Argumento(0) && botao->isVisible()) {
            ClicarEm(botao, botao->rect().center());
            return Resultado::Feito;
        }
    }
    motivo = "o diálogo não tem esse botão";
    return Resultado::AindaNao;
}

Resultado Executor::Escolher(const Comando &comando, QString &motivo)
{
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu) {
        motivo = "nenhum menu está aberto";
        return Resultado::AindaNao;
    }
    const auto acoes = menu->actions();
    for (QAction *acao : acoes) {
        QString texto = acao->text();
        if (texto.remove('&') == comando.Argumento(0)) {
            ClicarEm(menu, menu->actionGeometry(acao).center());
            return Resultado::Feito;
        }
    }
    motivo = "o menu não tem essa escolha";
    return Resultado::Falhou;
}

Resultado Executor::Conferir(const Comando &comando, QString &motivo)
{
    const QString oque = comando.Argumento(0);
    const QString nome = comando.Argumento(1);
    QString achado;
    QString esperado;
    if (oque == "mensagem") {
        QWidget *dialogo = QApplication::activeModalWidget();
        achado = dialogo ? dialogo->property("text").toString() : "(nenhuma)";
        esperado = nome;
    } else {
        QWidget *controle = Controle(nome);
        const bool visivel = controle && controle->isVisible();
        if (oque == "visivel" || oque == "oculto") {
            achado = visivel ? "visivel" : "oculto";
            esperado = oque;
        } else if (!controle) {
            motivo = "não existe";
            return Resultado::AindaNao;
        } else if (oque == "texto") {
            achado = TextoDe(controle);
            esperado = comando.Argumento(2);
        } else if (oque == "inteiro") {
            const QRect lugar(controle->mapToGlobal(QPoint(0, 0)), controle->size());
            const QRect tela = controle->screen()->geometry();
            achado = tela.contains(lugar) ? "sim"
                                          : QString("%1 x %2 em %3, %4 numa tela de %5 x %6")
                                                .arg(lugar.width())
                                                .arg(lugar.height())
                                                .arg(lugar.x())
                                                .arg(lugar.y())
                                                .arg(tela.width())
                                                .arg(tela.height());
            esperado = "sim";
        } else if (oque == "altura") {
            achado = controle->property("alturaTwips").toString();
            esperado = comando.Argumento(2);
        } else if (oque == "linhas" || oque == "linhas-abaixo" || oque == "celula") {
            auto *vista = qobject_cast<QAbstractItemView *>(controle);
            if (!vista) {
                motivo = "não é uma lista";
                return Resultado::Falhou;
            }
            if (oque == "linhas") {
                achado = QString::number(vista->model()->rowCount());
                esperado = comando.Argumento(2);
            } else if (oque == "linhas-abaixo") {
                const QAbstractItemModel *modelo = vista->model();
                achado = QString::number(modelo->rowCount(modelo->index(0, 0)));
                esperado = comando.Argumento(2);
            } else {
                const QModelIndex linha = Linha(vista, {}, comando.Argumento(2));
                achado = linha.siblingAtColumn(comando.Argumento(3).toInt()).data().toString();
                esperado = comando.Argumento(4);
            }
        } else {
            motivo = "não sei conferir " + oque;
            return Resultado::Falhou;
        }
    }
    if (achado == esperado)
        return Resultado::Feito;
    motivo = QString("achei \"%1\", esperava \"%2\"").arg(achado, esperado);
    return Resultado::AindaNao;
}

Resultado Executor::Fotografar(const Comando &comando, QString &motivo)
{
    QWidget *alvo = nullptr;
    if (comando.argumentos.size() > 1)
        alvo = Controle(comando.Argumento(1));
    else if (comando.verbo == "foto")
        alvo = QApplication::activeModalWidget();
    if (!alvo && comando.argumentos.size() < 2)
        alvo = JanelaPrincipal();
    if (!alvo || !alvo->isVisible()) {
        motivo = "nada para fotografar";
        return Resultado::AindaNao;
    }
    const QPixmap foto = comando.verbo == "foto-com-dialogos" ? RetratoComDialogos(*alvo) : Retrato(*alvo);
    if (foto.save(comando.Argumento(0)))
        return Resultado::Feito;
    motivo = "não consegui gravar a foto";
    return Resultado::Falhou;
}

// While an operation runs, no command is played: the picture is taken from within its looks at the events.
Resultado Executor::FotografarEmAndamento(const Comando &comando, QString &motivo)
{
    auto *barra = qobject_cast<QProgressBar *>(Controle(comando.Argumento(1)));
    if (!barra) {
        motivo = "não é uma barra de progresso";
        return Resultado::Falhou;
    }
    auto *relogio = new QTimer(barra);
    QObject::connect(relogio, &QTimer::timeout, barra, [relogio, barra, arquivo = comando.Argumento(0)] {
        if (!barra->isVisible() || 2 * barra->value() < barra->maximum())
            return;
        relogio->stop();
        relogio->deleteLater();
        if (!Retrato(*barra->window()).save(arquivo))
            qWarning("roteiro: could not save %s", qPrintable(arquivo));
    });
    relogio->start(1);
    return Resultado::Feito;
}

Resultado Executor::Guardar(const Comando &comando, QString &motivo)
{
    QWidget *controle = Controle(comando.Argumento(1));
    QFile arquivo(comando.Argumento(0));
    if (!controle || !arquivo.open(QIODevice::WriteOnly | QIODevice::Append)) {
        motivo = "não consegui guardar";
        return Resultado::Falhou;
    }
    if (auto *vista = qobject_cast<QAbstractItemView *>(controle)) {
        for (int i = 0; i < vista->model()->rowCount(); ++i)
            arquivo.write(vista->model()->index(i, 0).data().toString().toUtf8() + '\n');
    } else {
        arquivo.write(TextoDe(controle).toUtf8() + '\n');
    }
    return Resultado::Feito;
}
