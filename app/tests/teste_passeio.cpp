#include "PortasDeTeste.h"

#include "assets/Recursos.h"
#include "base/Alcance.h"
#include "base/EventosPendentes.h"
#include "base/Fontes.h"
#include "base/Operacao.h"
#include "base/Ordem.h"
#include "base/Painel.h"
#include "store/Comandos.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

namespace
{
constexpr auto kLista = " Receitas Cadastradas";
constexpr auto kNova = " Nova Receita ";
constexpr auto kAlteracao = " Alteração da Receita ";
constexpr auto kPesquisa = " Pesquisa de Receitas ";

enum class Foco { Lista, Nome, Pesquisa, Cartao, Nenhum };

/// What window and book must be, kept without the program: the views by their rules, the book by its rows.
struct Modelo {
    struct Entrada {
        QString titulo;
        QChar tela;
    };

    void Empilhar(const QString &deQue, QChar tela)
    {
        if (historia.size() == 5) { // the two newest are lost
            const auto antes = historia;
            historia = {antes[0], antes[0], antes[1], antes[2]};
        }
        historia.push_back({deQue, tela});
    }
    void Abrir(const QString &deQue, QChar tela)
    {
        Empilhar(deQue, tela);
        titulo = deQue;
        Visivel(tela) = true;
        if (tela != 'P')
            frente = tela;
    }
    bool &Visivel(QChar tela) { return tela == 'L' ? lista : tela == 'D' ? editor : pesquisa; }
    bool EditorAVista() const { return editor && (!lista || frente == 'D'); }
    bool ListaAVista() const { return lista && (!editor || frente == 'L'); }
    int Altura() const { return pesquisa ? 3780 : 6540; }

    void MostrarTopo()
    {
        while (!historia.empty() && !Visivel(historia.back().tela))
            historia.pop_back();
        if (historia.empty()) {
            lista = editor = pesquisa = false;
            foco = Foco::Nenhum;
            return;
        }
        titulo = historia.back().titulo;
        FocarEm(historia.back().tela);
    }
    void FocarEm(QChar tela)
    {
        if (tela == 'P')
            foco = Foco::Pesquisa;
        else if (EditorAVista())
            foco = cartao ? Foco::Cartao : Foco::Nome;
        else
            foco = Foco::Lista;
    }
    void Fechar()
    {
        const QChar tela = historia.back().tela;
        historia.pop_back();
        Visivel(tela) = false;
        MostrarTopo();
    }
    void FecharEditor()
    {
        if (historia.back().tela == 'D') {
            Fechar();
            return;
        }
        std::erase_if(historia, [](const Entrada &entrada) { return entrada.tela == 'D'; });
        editor = false;
        MostrarTopo();
    }
    void EncherLista(const QString &contem = {})
    {
        linhas.clear();
        for (const auto &[numero, guardado] : livro) {
            if (guardado.contains(contem))
                linhas << guardado;
        }
        std::stable_sort(linhas.begin(), linhas.end(), [](const QString &a, const QString &b) {
            return Ordem::Comparar(QStringView(a), QStringView(b)) < 0;
        });
        selecionada = -1;
        Abrir(kLista, 'L');
        foco = Foco::Lista;
    }

    std::map<qint64, QString> livro;
    qint64 ultimo = 0;
    std::vector<Entrada> historia;
    QString titulo;
    bool lista = false, editor = false, pesquisa = false, cartao = false;
    QChar frente = 'L';
    Foco foco = Foco::Nenhum;
    QStringList linhas;
    int selecionada = -1;
    qint64 receita = 0; ///< the one in the editor, 0: new
    QString nome;
    bool temModo = false, temLinha = false;
    qsizetype avisos = 0;
};
} // namespace

/**
 * A cook at random over the running window: views are opened, covered and closed, keys and access keys are
 * pressed wherever the focus is, recipes saved and deleted, other copies announce themselves. After every
 * step window, focus and book are what a model without windows says.
 */
class TestePasseio : public QObject
{
    Q_OBJECT

    std::unique_ptr<ProgramaDeTeste> p;
    Modelo m;
    std::mt19937 sorte;
    QStringList passos;

    template <typename T = QWidget>
    T *C(const char *nome) const
    {
        T *controle = p->janela.findChild<T *>(nome);
        if (!controle)
            qFatal("%s is missing", nome);
        return controle;
    }
    int Sortear(int quantos) { return static_cast<int>(sorte() % static_cast<unsigned>(quantos)); }
    void Tecle(Qt::Key tecla, Qt::KeyboardModifiers modificadores = {}) const
    {
        QTest::keyClick(p->janela.windowHandle(), tecla, modificadores);
    }
    void Letra(char letra) const { QTest::keyClick(p->janela.windowHandle(), letra); }
    /// Where the mouse would meet it; false when something lies before it there.
    bool Clique(QWidget *controle, QPoint onde, bool duplo = false) const
    {
        const QPoint ponto = controle->mapTo(&p->janela, onde);
        if (p->janela.childAt(ponto) != controle)
            return false;
        QTest::mouseClick(p->janela.windowHandle(), Qt::LeftButton, {}, ponto);
        if (duplo)
            QTest::mouseDClick(p->janela.windowHandle(), Qt::LeftButton, {}, ponto);
        return true;
    }
    bool Clique(const char *nome) const { return Clique(C(nome), C(nome)->rect().center()); }

    QStringList NomesNaLista() const
    {
        const QAbstractItemModel *linhas = C<QAbstractItemView>("lstVwReceitas")->model();
        QStringList nomes;
        for (int linha = 0; linha < linhas->rowCount(); ++linha)
            nomes << linhas->index(linha, 0).data().toString();
        return nomes;
    }
    qint64 NumeroNaLinha(int linha) const
    {
        const QAbstractItemModel *linhas = C<QAbstractItemView>("lstVwReceitas")->model();
        return linhas->index(linha, 0).data(Qt::UserRole).toString().mid(1).toLongLong();
    }
    void LerSelecao()
    {
        const QModelIndexList linhas =
            C<QAbstractItemView>("lstVwReceitas")->selectionModel()->selectedRows();
        m.selecionada = linhas.size() == 1 ? linhas.first().row() : -1;
    }

    // The steps. Each does something to the window and says what must come of it.

    void Novas()
    {
        Clique("imgDetRcta");
        m.cartao = false;
        m.receita = 0;
        m.nome.clear();
        m.temModo = m.temLinha = false;
        m.Abrir(kNova, 'D');
        m.foco = Foco::Nome;
    }
    void Listar()
    {
        Clique("imgLstRcta");
        m.EncherLista();
    }
    void AbrirPesquisa()
    {
        Clique("imgPesRcta");
        m.Abrir(kPesquisa, 'P');
        m.foco = Foco::Pesquisa;
    }
    void Voltar(bool tecla)
    {
        tecla ? Tecle(Qt::Key_V, Qt::AltModifier) : void(Clique("lblFechar"));
        if (!m.historia.empty())
            m.Fechar();
    }
    void Pesquisar()
    {
        const char letra = static_cast<char>('a' + Sortear(4));
        if (m.pesquisa) {
            QVERIFY(Clique("txtPesNome"));
            Tecle(Qt::Key_A, Qt::ControlModifier);
            Letra(letra);
            m.foco = Foco::Pesquisa;
        }
        Tecle(Qt::Key_P, Qt::AltModifier);
        if (!m.pesquisa)
            return;
        const bool acha = std::any_of(m.livro.begin(), m.livro.end(), [letra](const auto &receita) {
            return receita.second.contains(letra);
        });
        if (acha)
            m.EncherLista(QChar(letra));
        else
            ++m.avisos;
    }
    void CompletarReceita()
    {
        if (!m.EditorAVista() || m.cartao)
            return;
        C("txtModo")->setFocus();
        Letra('m');
        m.temModo = true;
        C("optIngredientes")->setFocus();
        Tecle(Qt::Key_Space);
        C("cmbIngrediente")->setFocus();
        for (const char letra : {'s', 'a', 'l'})
            Letra(letra);
        Tecle(Qt::Key_D, Qt::AltModifier);
        m.temLinha = true;
        C("txtNome")->setFocus();
        m.foco = Foco::Nome;
    }
    void Salvar()
    {
        Tecle(Qt::Key_S, Qt::AltModifier);
        if (!m.EditorAVista() || m.cartao)
            return;
        if (m.nome.isEmpty() || !m.temModo || !m.temLinha) {
            ++m.avisos;
            C("txtNome")->setFocus(); // the refusal has chosen another field, perhaps
            m.foco = Foco::Nome;
            return;
        }
        if (!m.livro.contains(m.receita))
            m.receita = ++m.ultimo; // new, or deleted meanwhile: written anew
        m.livro[m.receita] = m.nome;
        m.FecharEditor();
        m.EncherLista();
        LerSelecao();
        QCOMPARE(m.selecionada >= 0 ? NumeroNaLinha(m.selecionada) : 0, m.receita);
    }
    // The steps of a recipe one after the other, which chance alone seldom brings together.
    void Cadastrar()
    {
        Novas();
        CompletarReceita();
        for (int letras = 1 + Sortear(6); letras > 0; --letras)
            Escrever();
        if (Sortear(3) > 0)
            Salvar();
        else
            Listar(); // left there, half entered, under the list
    }
    void ExcluirDoEditor()
    {
        p->avisos.sim = Sortear(2) == 1;
        Tecle(Qt::Key_E, Qt::AltModifier);
        if (!m.EditorAVista() || m.cartao || m.receita == 0)
            return;
        ++m.avisos;
        if (!p->avisos.sim)
            return;
        m.livro.erase(m.receita);
        m.FecharEditor();
        m.EncherLista();
    }
    void Alterar()
    {
        Tecle(Qt::Key_A, Qt::AltModifier);
        if (!m.EditorAVista() || !m.cartao)
            return;
        m.cartao = false;
        m.Abrir(kAlteracao, 'D');
        m.foco = Foco::Nome;
    }
    void AbrirCartao(qint64 numero)
    {
        m.receita = numero;
        m.nome = m.livro.at(numero);
        m.temModo = m.temLinha = true;
        m.cartao = true;
        m.Abrir(kAlteracao, 'D');
        m.foco = Foco::Cartao;
    }
    void CliqueDuplo()
    {
        if (!m.ListaAVista() || m.linhas.isEmpty())
            return;
        auto *lista = C<QAbstractItemView>("lstVwReceitas");
        const int linha = Sortear(static_cast<int>(m.linhas.size()));
        const QRect lugar = lista->visualRect(lista->model()->index(linha, 0));
        const qint64 numero = NumeroNaLinha(linha);
        if (!lista->viewport()->rect().contains(lugar.center()) ||
            !Clique(lista->viewport(), lugar.center(), true))
            return;
        m.selecionada = linha;
        AbrirCartao(numero);
    }
    void Enter()
    {
        const qint64 numero = m.foco == Foco::Lista && m.selecionada >= 0 ? NumeroNaLinha(m.selecionada) : 0;
        Tecle(Qt::Key_Return);
        if (numero > 0)
            AbrirCartao(numero);
    }
    void Delete()
    {
        p->avisos.sim = Sortear(2) == 1;
        const qint64 numero = m.foco == Foco::Lista && m.selecionada >= 0 ? NumeroNaLinha(m.selecionada) : 0;
        auto *campo = C<QLineEdit>("txtNome");
        if (m.foco == Foco::Nome && !campo->hasSelectedText() && campo->cursorPosition() < m.nome.size())
            m.nome.remove(campo->cursorPosition(), 1);
        Tecle(Qt::Key_Delete);
        if (numero == 0)
            return;
        ++m.avisos;
        if (!p->avisos.sim)
            return;
        m.livro.erase(numero);
        m.EncherLista();
    }
    void Escrever()
    {
        const char letra = static_cast<char>('a' + Sortear(4));
        auto *campo = C<QLineEdit>("txtNome");
        if (m.foco == Foco::Nome && m.nome.size() < 40)
            m.nome.insert(campo->cursorPosition(), letra);
        else if (m.foco == Foco::Nome)
            return;
        Letra(letra);
        if (m.foco == Foco::Lista)
            LerSelecao(); // typing ahead may go anywhere in the list, and nowhere else
    }
    void Seta()
    {
        static constexpr Qt::Key kTeclas[] = {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End};
        Tecle(kTeclas[Sortear(4)]);
        if (m.foco == Foco::Lista) {
            LerSelecao();
            QCOMPARE(m.selecionada >= 0, !m.linhas.isEmpty());
        }
    }
    void TeclaDeAcessoDeNinguem()
    {
        // What these letters could press, if anything, is another step's.
        static constexpr Qt::Key kTeclas[] = {Qt::Key_X, Qt::Key_B, Qt::Key_K, Qt::Key_Z};
        Tecle(kTeclas[Sortear(4)], Qt::AltModifier);
    }
    void OutraCopia()
    {
        p->janela.RecarregarLista();
        p->janela.RecarregarLista();
        QTRY_VERIFY(!Operacao::EmAndamento());
        DeixarEventosRodarem();
        m.EncherLista();
    }
    void Tabular()
    {
        for (int i = Sortear(4); i >= 0; --i) {
            Tecle(Qt::Key_Tab);
            const QWidget *foco = p->janela.focusWidget();
            QVERIFY(foco);
            QVERIFY2(!Alcance::Encoberto(*foco), qPrintable(foco->objectName()));
        }
        Refocar();
    }
    // Back to a place that the model knows, by the view's own way.
    void Refocar()
    {
        QWidget *const lugar = m.foco == Foco::Lista      ? C("lstVwReceitas")
                               : m.foco == Foco::Nome     ? C("txtNome")
                               : m.foco == Foco::Pesquisa ? C("txtPesNome")
                               : m.foco == Foco::Cartao   ? C("picViewDados")
                                                          : nullptr;
        lugar ? lugar->setFocus() : p->janela.setFocus();
        if (m.foco == Foco::Nome)
            C<QLineEdit>("txtNome")->deselect();
    }

    void Passo(int numero)
    {
        static const std::vector<std::pair<const char *, void (*)(TestePasseio &)>> kPassos{
            {"nova", [](TestePasseio &t) { t.Novas(); }},
            {"lista", [](TestePasseio &t) { t.Listar(); }},
            {"pesquisa", [](TestePasseio &t) { t.AbrirPesquisa(); }},
            {"voltar", [](TestePasseio &t) { t.Voltar(false); }},
            {"alt+v", [](TestePasseio &t) { t.Voltar(true); }},
            {"pesquisar", [](TestePasseio &t) { t.Pesquisar(); }},
            {"completar", [](TestePasseio &t) { t.CompletarReceita(); }},
            {"cadastrar", [](TestePasseio &t) { t.Cadastrar(); }},
            {"cadastrar", [](TestePasseio &t) { t.Cadastrar(); }},
            {"salvar", [](TestePasseio &t) { t.Salvar(); }},
            {"salvar", [](TestePasseio &t) { t.Salvar(); }},
            {"excluir do editor", [](TestePasseio &t) { t.ExcluirDoEditor(); }},
            {"alterar", [](TestePasseio &t) { t.Alterar(); }},
            {"alterar", [](TestePasseio &t) { t.Alterar(); }},
            {"clique duplo", [](TestePasseio &t) { t.CliqueDuplo(); }},
            {"enter", [](TestePasseio &t) { t.Enter(); }},
            {"delete", [](TestePasseio &t) { t.Delete(); }},
            {"escrever", [](TestePasseio &t) { t.Escrever(); }},
            {"escrever", [](TestePasseio &t) { t.Escrever(); }},
            {"seta", [](TestePasseio &t) { t.Seta(); }},
            {"alt+letra", [](TestePasseio &t) { t.TeclaDeAcessoDeNinguem(); }},
            {"outra cópia", [](TestePasseio &t) { t.OutraCopia(); }},
            {"tab", [](TestePasseio &t) { t.Tabular(); }},
        };
        const auto &[nome, passo] =
            kPassos[static_cast<std::size_t>(Sortear(static_cast<int>(kPassos.size())))];
        passos << QString("%1 %2").arg(numero).arg(nome);
        passo(*this);
    }

    void Conferir()
    {
        QVERIFY(!Operacao::EmAndamento());
        QCOMPARE(p->avisos.mostrados.size(), m.avisos);
        QCOMPARE(!C("picLstReceitas")->isHidden(), m.lista);
        QCOMPARE(!C("picDetReceita")->isHidden(), m.editor);
        QCOMPARE(!C("picPesReceita")->isHidden(), m.pesquisa);
        QCOMPARE(!C("picTitulo")->isHidden(), m.lista || m.editor || m.pesquisa);
        if (m.lista || m.editor || m.pesquisa)
            QCOMPARE(C<QLabel>("lblTitulo")->text(), m.titulo);
        if (m.lista)
            QCOMPARE(C<Painel>("picLstReceitas")->Altura(), m.Altura());
        if (m.editor) {
            QCOMPARE(C<Painel>("picDetReceita")->Altura(), m.Altura());
            QCOMPARE(!C("picView")->isHidden(), m.cartao);
            QCOMPARE(C<QLineEdit>("txtNome")->text(), m.nome);
        }
        if (m.lista)
            QCOMPARE(NomesNaLista(), m.linhas);

        std::map<qint64, QString> livro;
        RecordSet rs = p->banco.AbrirRecordset(Comandos::SqlLista());
        for (; !rs.Eof(); rs.MoveNext())
            livro[rs.Valor(u"id_receitas").toLongLong()] = rs.Texto(u"Nome");
        QVERIFY(livro == m.livro);

        const QWidget *foco = p->janela.focusWidget();
        const QString onde = foco ? foco->objectName() : QString();
        if (foco)
            QVERIFY2(!Alcance::Encoberto(*foco), qPrintable(onde));
        if (m.foco == Foco::Lista)
            QCOMPARE(onde, QString("lstVwReceitas"));
        else if (m.foco == Foco::Nome)
            QCOMPARE(onde, QString("txtNome"));
        else if (m.foco == Foco::Pesquisa)
            QCOMPARE(onde, QString("txtPesNome"));
        else if (m.foco == Foco::Cartao)
            QVERIFY2(C("picView")->isAncestorOf(foco), qPrintable(onde));
    }

private slots:
    void initTestCase()
    {
        IniciarRecursos();
        InstalarFontes();
        Painel::DefinirRitmo(0);
    }

    void cincoMilPassos()
    {
        constexpr int kPassosDados = 5000;
        constexpr unsigned kSemente = 20051121;
        sorte.seed(qEnvironmentVariableIsSet("COZINHARIO_SEMENTE")
                       ? qEnvironmentVariable("COZINHARIO_SEMENTE").toUInt()
                       : kSemente);
        p = std::make_unique<ProgramaDeTeste>();
        p->janela.show();
        p->janela.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&p->janela));
        QTRY_VERIFY(!C("picLstReceitas")->isHidden() && !Operacao::EmAndamento());
        C<QTimer>("TimerWeb")->stop();
        p->janela.setUpdatesEnabled(false); // nobody looks
        m.EncherLista();
        Listar();
        for (int i = 1; i <= kPassosDados; ++i) {
            Passo(i);
            if (!QTest::currentTestFailed())
                Conferir();
            if (QTest::currentTestFailed()) {
                qWarning().noquote() << "the last steps:"
                                     << passos.last(std::min<qsizetype>(12, passos.size())).join(", ");
                return;
            }
        }
        QVERIFY(m.ultimo > 30); // it was a walk, not a standstill
    }
};

QTEST_MAIN(TestePasseio)
#include "teste_passeio.moc"
