#include "app/Aparencia.h"
#include "app/CaberNaTela.h"
#include "app/CopiaUnica.h"
#include "app/Pasta.h"
#include "app/Site.h"
#include "app/Sobras.h"
#include "app/frmPrincipal.h"
#include "assets/Recursos.h"
#include "base/AbridorQt.h"
#include "base/Alcance.h"
#include "base/AvisosQt.h"
#include "base/Disco.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/Protegido.h"
#include "base/Relogio.h"
#include "base/SeletorArquivosQt.h"
#include "base/Separadores.h"
#include "base/Sorteio.h"
#include "news/ClienteWebQt.h"
#include "packages/LinhaDeComando.h"
#include "packages/Lixeira.h"
#include "packages/frmImportacao.h"
#include "print/Impressoras.h"
#include "store/Banco.h"
#include "store/Figuras.h"
#include "store/access/ConversorAccess.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLocale>
#include <QTranslator>

#include <functional>

namespace
{
/// What became of the package named on the command line.
struct Importacao {
    bool segue = false;  ///< else the program ends here
    bool entrou = false; ///< the book has recipes that it had not
};

Importacao ImportarPacote(const Banco &banco, const Figuras &figuras, Avisos &avisos, const QString &pacote)
{
    InstalarFontes();
    QApplication::setWindowIcon(QIcon(":/cozinhario.svg"));
    Importacao importacao;
    Proteger(avisos, [&] {
        RelogioDoSistema relogio;
        frmImportacao dialogo(banco, figuras, avisos, relogio);
        importacao.segue = dialogo.Executar(pacote) == frmImportacao::Desfecho::Importado;
        importacao.entrou = dialogo.AlgumaEntrou();
    });
    return importacao;
}
/// The package's path. A name whose bytes are no text is found again among the arguments as the system gave
/// them.
QString PacoteDaLinhaDeComando(int argc, char *argv[])
{
    const QString pacote = CaminhoDaLinhaDeComando(QApplication::arguments().mid(1));
    for (int i = 1; i < argc; ++i)
        if (CaminhoDaLinhaDeComando({QFile::decodeName(argv[i])}) == pacote)
            return Disco::Alcancavel(QByteArray(argv[i]).replace('"', ""));
    return pacote;
}
} // namespace

int main(int argc, char *argv[])
{
    QApplication aplicacao(argc, argv);
    QApplication::setApplicationName("cozinhario");
    QApplication::setDesktopFileName("cozinhario");
    // The end of the program is always asked for; closing the import dialog is not it.
    QApplication::setQuitOnLastWindowClosed(false);

    CaberNaTela(frmPrincipal::Tamanho());
    IniciarRecursos();
    QTranslator traducao;
    if (traducao.load(":/traducoes/qtbase_pt_BR.qm"))
        QApplication::installTranslator(&traducao);
    AplicarAparencia(aplicacao);
    const Alcance alcance;
    Separadores::Definir(Separadores::De(QLocale::system()));

    Disco::SuportarLimiteDeTamanho();
    QByteArray pastaDoPrograma = Disco::PastaDoPrograma();
    if (pastaDoPrograma.isEmpty())
        pastaDoPrograma = QFile::encodeName(QApplication::applicationDirPath());
    const auto [pasta, mudanca] = PastaDoLivro(Disco::Alcancavel(pastaDoPrograma));
    Banco banco(pasta);
    // An old Access book is converted at an opening, in the middle of some operation: the news of it wait.
    QStringList recados;
    if (!mudanca.isEmpty())
        recados << mudanca;
    std::function<void(const QString &)> recado = [&recados](const QString &texto) { recados << texto; };
    banco.DefinirConversor(ConversorAccess([&recado](const QString &texto) { recado(texto); }));
    const Figuras figuras(banco);
    AvisosQt avisos;
    const QString pacote = PacoteDaLinhaDeComando(argc, argv);

    CopiaUnica copia(pasta);
    if (!copia.Primeira()) {
        const bool entrou = !pacote.isEmpty() && ImportarPacote(banco, figuras, avisos, pacote).entrou;
        for (const QString &texto : std::as_const(recados))
            avisos.Avisar(texto, Avisos::Icone::Informacao);
        // A package that brought nothing is no reason to touch what the first copy shows.
        if (entrou)
            copia.Entregar(CopiaUnica::Aviso::ImportacaoTerminada);
        else if (pacote.isEmpty() && !copia.Entregar(CopiaUnica::Aviso::Ativar)) {
            InstalarFontes();
            avisos.Avisar(
                "O Cozinhario 2005 já está aberto, mas não responde.\r\n\r\nEspere que ele termine o que "
                "está fazendo, ou encerre-o, e tente de novo.",
                Avisos::Icone::Exclamacao);
            return 1;
        }
        return 0;
    }
    copia.Escutar();
    if (copia.Trancada())
        RemoverSobras(banco);

    SeletorArquivosQt seletor;
    AbridorQt abridor;
    RelogioDoSistema relogio;
    SorteioDoSistema sorteio;
    ImpressorasDoSistema impressoras;
    const Lixeira lixeira(banco, figuras, relogio);
    banco.DefinirAntesDeMudar([&lixeira](const QList<qint64> &numeros) { lixeira.Guardar(numeros); });
    frmPrincipal janela(banco, figuras,
                        {avisos, seletor, relogio, sorteio, abridor, impressoras, COZINHARIO_SITE},
                        std::make_unique<ClienteWebQt>());
    avisos.DefinirJanela(&janela);
    seletor.DefinirJanela(&janela);
    QObject::connect(&copia, &CopiaUnica::importacaoTerminada, &janela, &frmPrincipal::RecarregarLista);
    QObject::connect(&copia, &CopiaUnica::ativacaoPedida, &janela, [&janela] {
        janela.TrazerParaFrente();
        janela.RecarregarLista();
    });

    if (!pacote.isEmpty()) {
        janela.Completar(); // a restore that was cut off ends before the book is read
        if (!ImportarPacote(banco, figuras, avisos, pacote).segue)
            return 0;
    }
    for (const QString &texto : std::as_const(recados))
        janela.AvisarDepois(texto);
    recado = [&janela](const QString &texto) { janela.AvisarDepois(texto); };
    janela.show();
    return QApplication::exec();
}
