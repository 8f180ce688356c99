#include "base/SeletorArquivosQt.h"

#include "base/Operacao.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QHeaderView>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeView>

namespace
{
// Room for names, sizes and dates side by side.
constexpr int kLargura = 760;
constexpr int kAltura = 460;
constexpr int kColunas[] = {250, 85, 120, 165}; // name, size, kind, date

/// The toolkit's translation leaves these two words of the column "Tipo" in English.
class TiposDeArquivo : public QFileIconProvider
{
public:
    QString type(const QFileInfo &info) const override
    {
        if (info.isDir())
            return "Pasta";
        const QString tipo = QFileIconProvider::type(info);
        return tipo == "Unknown" ? QString("Desconhecido") : tipo;
    }
};

/// Qt's dialog writes where it has been into a settings file of its own. This program leaves none behind, so
/// for as long as this lives settings go into a folder that goes with it, the present ones read from a copy.
class SemRastro
{
public:
    SemRastro()
    {
        const QString deles = Padrao() + kArquivo;
        if (QFile::exists(deles))
            QFile::copy(deles, m_pasta.path() + kArquivo);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_pasta.path());
    }
    ~SemRastro() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Padrao()); }
    SemRastro(const SemRastro &) = delete;
    SemRastro &operator=(const SemRastro &) = delete;

private:
    static QString Padrao() { return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation); }
    static constexpr auto kArquivo = "/QtProject.conf";

    QTemporaryDir m_pasta;
};

// A desktop's own file dialog has no such list and stays as it is.
void AlargarColunas(QFileDialog &dialogo)
{
    const auto *lista = dialogo.findChild<QTreeView *>("treeView");
    if (!lista)
        return;
    for (int coluna = 0; coluna < static_cast<int>(std::size(kColunas)); ++coluna)
        lista->header()->resizeSection(coluna, kColunas[coluna]);
}
} // namespace

QString SeletorArquivosQt::FiltroQt(const QString &filtro, bool doisCasos)
{
    const QStringList partes = filtro.split('|');
    QStringList saida;
    for (qsizetype i = 0; i + 1 < partes.size(); i += 2) {
        QStringList padroes;
        for (const QString &padrao : partes[i + 1].split(';')) {
            padroes << padrao;
            if (doisCasos && padrao.toUpper() != padrao)
                padroes << padrao.toUpper();
        }
        saida += QString("%1 (%2)").arg(partes[i], padroes.join(' '));
    }
    return saida.join(";;");
}

QString SeletorArquivosQt::Escolher(const PedidoArquivo &pedido, bool salvar)
{
    TiposDeArquivo tipos; // outlives the dialog
    const SemRastro rastro;
    QFileDialog dialogo(m_janela, pedido.titulo, pedido.pastaInicial, FiltroQt(pedido.filtro));
    dialogo.setObjectName("CmmnDlg");
    dialogo.setIconProvider(&tipos);
    dialogo.resize(kLargura, kAltura);
    if (salvar) {
        dialogo.setAcceptMode(QFileDialog::AcceptSave);
        dialogo.setFileMode(QFileDialog::AnyFile);
        dialogo.setOption(QFileDialog::DontConfirmOverwrite);
        // A filter of one kind of file completes a name that is typed without its ending.
        const QString padrao = pedido.filtro.section('|', 1, 1);
        if (padrao.startsWith("*.") && !padrao.contains(';'))
            dialogo.setDefaultSuffix(padrao.mid(2));
    } else {
        dialogo.setAcceptMode(QFileDialog::AcceptOpen);
        dialogo.setFileMode(pedido.exigirExistente ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
        if (!pedido.exigirExistente)
            dialogo.setLabelText(QFileDialog::Accept, "&Abrir");
    }
    if (!pedido.nome.isEmpty())
        dialogo.selectFile(pedido.nome);
    AlargarColunas(dialogo);
    // Qt's own dialog shows IMG_2041.JPG for "*.jpg"; a desktop's may tell the letters' case apart.
    if (!dialogo.findChild<QTreeView *>("treeView"))
        dialogo.setNameFilters(FiltroQt(pedido.filtro, true).split(";;"));
    const Operacao operacao(Operacao::Tipo::Dialogo);
    if (dialogo.exec() != QDialog::Accepted)
        return {};
    return dialogo.selectedFiles().value(0);
}

QString SeletorArquivosQt::EscolherParaAbrir(const PedidoArquivo &pedido)
{
    return Escolher(pedido, false);
}

QString SeletorArquivosQt::EscolherParaSalvar(const PedidoArquivo &pedido)
{
    return Escolher(pedido, true);
}
