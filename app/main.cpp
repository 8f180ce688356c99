#include "app/Aparencia.h"
#include "app/CaberNaTela.h"
#include "app/CopiaUnica.h"
#include "app/Pasta.h"
#include "app/Site.h"
#include "app/frmPrincipal.h"
#include "assets/Recursos.h"
#include "base/AbridorQt.h"
#include "base/Alcance.h"
#include "base/AvisosQt.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/Protegido.h"
#include "base/Relogio.h"
#include "base/SeletorArquivosQt.h"
#include "base/Separadores.h"
#include "base/Sorteio.h"
#include "news/ClienteWebQt.h"
#include "packages/LinhaDeComando.h"
#include "packages/frmImportacao.h"
#include "print/Impressoras.h"
#include "store/Banco.h"
#include "store/Figuras.h"
#include "store/access/ConversorAccess.h"

#include <QApplication>
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

    const QString pasta = PastaDoLivro(QApplication::applicationDirPath());
    Banco banco(pasta);
    // An old Access book is converted at an opening, in the middle of some operation: the news of it wait.
    QStringList recados;
    std::function<void(const QString &)> recado = [&recados](const QString &texto) { recados << texto; };
    banco.DefinirConversor(ConversorAccess([&recado](const QString &texto) { recado(texto); }));
    const Figuras figuras(banco);
    AvisosQt avisos;
    const QString pacote = CaminhoDaLinhaDeComando(QApplication::arguments().mid(1));

    CopiaUnica copia(pasta);
    if (!copia.Primeira()) {
        const bool entrou = !pacote.isEmpty() && ImportarPacote(banco, figuras, avisos, pacote).entrou;
        for (const QString &texto : std::as_const(recados))
            avisos.Avisar(texto, Avisos::Icone::Informacao);
        // A package that brought nothing is no reason to touch what the first copy shows.
        if (entrou)
            copia.Entregar(CopiaUnica::Aviso::ImportacaoTerminada);
        else if (pacote.isEmpty())
            copia.Entregar(CopiaUnica::Aviso::Ativar);
        return 0;
    }
    copia.Escutar();

    SeletorArquivosQt seletor;
    AbridorQt abridor;
    RelogioDoSistema relogio;
    SorteioDoSistema sorteio;
    ImpressorasDoSistema impressoras;
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
