#include "livro/Comandos.h"

#include "base/Numero.h"
#include "formatos/Codificacao.h"
#include "formatos/Exportador.h"
#include "formatos/Importador.h"
#include "formatos/Limpeza.h"
#include "formatos/LinhaDeIngrediente.h"
#include "formatos/LivroAberto.h"
#include "formatos/Rascunho.h"
#include "livro/Abrir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <exception>

using namespace Formatos;

namespace
{
struct Comando {
    const char *nome;
    const char *uso;
    const char *resumo;
    const char *opcoes;
};

constexpr Comando kComandos[] = {
    {"converter", "livro converter ENTRADA... -o PACOTE.lr$ [--pagina NOME] [--json]",
     "Converte receitas de outros programas e de páginas salvas num pacote, que o Cozinhario 2005 importa.",
     "  ENTRADA           arquivo, pasta ou zip; o formato é reconhecido pelo conteúdo\n"
     "  -o, --saida       o pacote a gravar\n"
     "      --pagina      página de código dos arquivos de texto: 1252, 850, 860, utf-8\n"},
    {"abrir", "livro abrir ARQUIVO... [--programa CAMINHO]",
     "Converte e entrega o pacote ao Cozinhario 2005, que pergunta o que importar.",
     "      --programa    o executável do Cozinhario 2005, se não for o instalado\n"},
    {"exportar", "livro exportar [--de PASTA] --formato FORMATO -o SAÍDA [NÚMERO|NOME]...",
     "Grava o livro, ou algumas receitas, em outro formato.",
     "      --de          pasta do livro, arquivo dadosr.lst, cópia de segurança ou pacote\n"
     "      --formato     json, html, markdown, cooklang, mealmaster, csv, pacote ou access\n"
     "  -o, --saida       arquivo ou pasta a gravar\n"
     "      --pagina      página de código do arquivo (mealmaster): 1252, 850, 860, utf-8\n"},
    {"pagina", "livro pagina [--de PASTA] -o LIVRO.html [--figuras nenhuma|pequenas|todas] [NÚMERO|NOME]...",
     "Grava o livro como uma página que funciona sem rede no telefone, no tablet e no computador.",
     "      --de          pasta do livro, arquivo dadosr.lst, cópia de segurança ou pacote\n"
     "  -o, --saida       a página a gravar\n"
     "      --figuras     nenhuma, pequenas (até 640 pontos) ou todas como estão (o normal)\n"},
    {"verificar", "livro verificar [ALVO]",
     "Confere se um livro, pacote ou cópia de segurança está inteiro. Sai com 0 se estiver.",
     "  ALVO              pasta do livro, arquivo dadosr.lst, cópia de segurança ou pacote\n"},
    {"listar", "livro listar [--de PASTA] [NÚMERO|NOME]...", "Lista as receitas: número, nome, tipo e tempo.",
     "      --de          pasta do livro, arquivo dadosr.lst, cópia de segurança ou pacote\n"},
    {"mostrar", "livro mostrar [--de PASTA] NÚMERO|NOME...", "Mostra receitas inteiras no terminal.",
     "      --de          pasta do livro, arquivo dadosr.lst, cópia de segurança ou pacote\n"},
};

const Comando *ComandoDe(const QString &nome)
{
    for (const Comando &comando : kComandos)
        if (nome == QLatin1String(comando.nome))
            return &comando;
    return nullptr;
}

/// A command line taken apart.
struct LinhaDeComando {
    QStringList livres;
    QHash<QString, QString> valores;
    QSet<QString> chaves;
    QString erro;
};

LinhaDeComando Separar(const QStringList &argumentos, const QStringList &comValor)
{
    LinhaDeComando linha;
    bool soLivres = false;
    for (qsizetype i = 0; i < argumentos.size(); ++i) {
        QString a = argumentos[i];
        if (soLivres || !a.startsWith(u'-') || a == "-") {
            linha.livres += a;
            continue;
        }
        if (a == "--") {
            soLivres = true;
            continue;
        }
        QString valor;
        bool temValor = false;
        if (const qsizetype igual = a.indexOf(u'='); a.startsWith("--") && igual > 0) {
            valor = a.sliced(igual + 1);
            a.truncate(igual);
            temValor = true;
        }
        if (a == "-o")
            a = "--saida";
        if (a == "-h" || a == "--ajuda")
            a = "--help";
        const QString nome = a.sliced(a.startsWith("--") ? 2 : 1);
        if (comValor.contains(nome)) {
            if (!temValor) {
                if (i + 1 >= argumentos.size()) {
                    linha.erro = "Falta o valor de " + argumentos[i] + ".";
                    return linha;
                }
                valor = argumentos[++i];
            }
            linha.valores.insert(nome, valor);
        } else if (!temValor && (nome == "json" || nome == "help")) {
            linha.chaves.insert(nome);
        } else {
            linha.erro = "Opção desconhecida: " + argumentos[i];
            return linha;
        }
    }
    return linha;
}

QString Tamanho(qint64 bytes)
{
    if (bytes < 10'000)
        return QString::number(bytes) + " bytes";
    if (bytes < 1'000'000)
        return TextoDoNumero(std::round(static_cast<double>(bytes) / 100.0) / 10) + " kB";
    return TextoDoNumero(std::round(static_cast<double>(bytes) / 100'000.0) / 10) + " MB";
}

/// One run of a command: what all of them need.
class Corrida
{
public:
    Corrida(const LinhaDeComando &linha, const Livro::Ambiente &ambiente)
        : m_linha(linha)
        , m_ambiente(ambiente)
    {
    }

    int Converter();
    int Abrir();
    int Exportar(bool pagina);
    int Verificar();
    int Listar();
    int Mostrar();

private:
    void Dizer(const QString &texto) { m_ambiente.saida.write((texto + "\n").toUtf8()); }
    void Reclamar(const QString &texto) { m_ambiente.erros.write((texto + "\n").toUtf8()); }
    void DizerJson(const QJsonObject &objeto) { m_ambiente.saida.write(QJsonDocument(objeto).toJson()); }
    bool Json() const { return m_linha.chaves.contains("json"); }
    QString Opcao(const char *nome) const { return m_linha.valores.value(QLatin1String(nome)); }
    QString LivroPedido() const;
    /// The recipes that the arguments name, all without any; false after a complaint.
    bool Escolher(const LivroAberto &livro, const QStringList &pedidas, QList<ReceitaDoLivro> &receitas);
    void DizerAvisos(const Relato &relato);
    static QJsonArray AvisosEmJson(const Relato &relato);
    int Fracassar(const QString &texto);
    QList<Receita> LerEntradas(Relato &relato, QJsonArray *porArquivo);

    const LinhaDeComando &m_linha;
    const Livro::Ambiente &m_ambiente;
};

int Corrida::Fracassar(const QString &texto)
{
    if (Json())
        DizerJson({{"erro", texto}});
    else
        Reclamar("livro: " + texto);
    return Livro::kFalhou;
}

QString Corrida::LivroPedido() const
{
    if (const QString de = Opcao("de"); !de.isEmpty())
        return de;
    const QStringList lugares = {m_ambiente.pastaDoPrograma,
                                 QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/cozinhario2005",
                                 QDir::currentPath()};
    for (const QString &lugar : lugares)
        if (QFileInfo::exists(lugar + "/dadosr.lst"))
            return lugar;
    return lugares.first();
}

bool Corrida::Escolher(const LivroAberto &livro, const QStringList &pedidas, QList<ReceitaDoLivro> &receitas)
{
    if (pedidas.isEmpty()) {
        receitas = livro.Receitas();
        return true;
    }
    QSet<qint64> escolhidas;
    for (const QString &pedida : pedidas) {
        bool ok = false;
        const qint64 numero = pedida.toLongLong(&ok);
        const QString nome = Dobrar(pedida);
        bool achou = false;
        for (const ReceitaDoLivro &r : livro.Receitas())
            if ((ok && r.numero == numero) || r.receita.Nome == pedida || Dobrar(r.receita.Nome) == nome) {
                escolhidas.insert(r.numero);
                achou = true;
            }
        if (!achou) {
            Fracassar("Não há receita \"" + pedida + "\".");
            return false;
        }
    }
    for (const ReceitaDoLivro &r : livro.Receitas())
        if (escolhidas.contains(r.numero))
            receitas += r;
    return true;
}

void Corrida::DizerAvisos(const Relato &relato)
{
    for (const Aviso &aviso : relato.Avisos())
        Reclamar(aviso.arquivo + ": " + (aviso.receita.isEmpty() ? "" : aviso.receita + ": ") + aviso.texto);
}

QJsonArray Corrida::AvisosEmJson(const Relato &relato)
{
    QJsonArray lista;
    for (const Aviso &aviso : relato.Avisos())
        lista.append(QJsonObject{{"arquivo", aviso.arquivo}, {"receita", aviso.receita}, {"texto", aviso.texto}});
    return lista;
}

QList<Receita> Corrida::LerEntradas(Relato &relato, QJsonArray *porArquivo)
{
    QList<Receita> receitas;
    Importador importador(relato, Opcao("pagina").toLatin1());
    for (const QString &entrada : m_linha.livres) {
        const int puladas = relato.Puladas();
        const int substituidos = relato.Substituidos();
        const int figuras = relato.FigurasFaltam();
        const QList<Receita> lidas = importador.Ler(entrada);
        for (const Receita &receita : lidas)
            receitas += ParaOPacote(receita);
        if (porArquivo) {
            porArquivo->append(QJsonObject{{"arquivo", entrada},
                                           {"receitas", lidas.size()},
                                           {"deixadasDeFora", relato.Puladas() - puladas},
                                           {"substituidos", relato.Substituidos() - substituidos},
                                           {"figurasQueFaltam", relato.FigurasFaltam() - figuras}});
        } else {
            QString linha = entrada + ": " + QString::number(lidas.size()) + (lidas.size() == 1 ? " receita" : " receitas");
            if (const int n = relato.Puladas() - puladas; n > 0)
                linha += ", " + QString::number(n) + (n == 1 ? " deixada de fora" : " deixadas de fora");
            if (const int n = relato.Substituidos() - substituidos; n > 0)
                linha += ", " + QString::number(n) + (n == 1 ? " trecho substituído por \"?\"" : " trechos substituídos por \"?\"");
            if (const int n = relato.FigurasFaltam() - figuras; n > 0)
                linha += ", " + QString::number(n) + (n == 1 ? " figura faltou" : " figuras faltaram");
            Dizer(linha + ".");
        }
    }
    for (const QString &nome : NomesRepetidos(receitas)) {
        relato.DefinirArquivo(QString());
        relato.DefinirReceita(nome);
        relato.Avisar("Há mais de uma receita com este nome.");
    }
    return receitas;
}

int Corrida::Converter()
{
    const QString saida = Opcao("saida");
    if (m_linha.livres.isEmpty() || saida.isEmpty()) {
        Reclamar("livro: diga o que converter e onde gravar. Uso: " + QString::fromUtf8(ComandoDe("converter")->uso));
        return Livro::kMauUso;
    }
    Relato relato;
    QJsonArray porArquivo;
    const QList<Receita> receitas = LerEntradas(relato, Json() ? &porArquivo : nullptr);
    if (!Json())
        DizerAvisos(relato);
    QString erro = receitas.isEmpty() ? QString("Nenhuma receita foi encontrada. Nada foi gravado.") : GravarPacote(receitas, saida);
    if (Json()) {
        QJsonObject objeto{{"receitas", receitas.size()}, {"arquivos", porArquivo}, {"avisos", AvisosEmJson(relato)}};
        if (erro.isEmpty())
            objeto["pacote"] = saida;
        else
            objeto["erro"] = erro;
        DizerJson(objeto);
    } else if (!erro.isEmpty()) {
        Reclamar("livro: " + erro);
    } else {
        Dizer(saida + ": " + QString::number(receitas.size()) + (receitas.size() == 1 ? " receita" : " receitas") + ", " +
              Tamanho(QFileInfo(saida).size()) + ".");
    }
    return erro.isEmpty() ? Livro::kFeito : Livro::kFalhou;
}

int Corrida::Abrir()
{
    if (m_linha.livres.isEmpty()) {
        Reclamar("livro: diga o que abrir. Uso: " + QString::fromUtf8(ComandoDe("abrir")->uso));
        return Livro::kMauUso;
    }
    Relato relato;
    const QList<Receita> receitas = LerEntradas(relato, nullptr);
    DizerAvisos(relato);
    QStringList avisos;
    for (const Aviso &aviso : relato.Avisos())
        avisos += (aviso.receita.isEmpty() ? "" : aviso.receita + ": ") + aviso.texto;
    QTemporaryDir pasta;
    const QString pacote = pasta.filePath("PacoteReceita.lr$");
    const QString erro = receitas.isEmpty() ? QString("Nenhuma receita foi encontrada neste arquivo.") : GravarPacote(receitas, pacote);
    if (!erro.isEmpty()) {
        Reclamar("livro: " + erro);
        Livro::AvisarNaTela(erro, avisos);
        return Livro::kFalhou;
    }
    if (!avisos.isEmpty())
        Livro::AvisarNaTela("Algumas coisas não couberam como estavam:", avisos);
    return Livro::EntregarAoPrograma(pacote, Opcao("programa"), m_ambiente.pastaDoPrograma, m_ambiente.erros) ? Livro::kFeito
                                                                                                             : Livro::kFalhou;
}

int Corrida::Exportar(bool pagina)
{
    const QString saida = Opcao("saida");
    const QString formato = pagina ? QString("html") : Opcao("formato");
    const QString figuras = Opcao("figuras").isEmpty() ? QString("todas") : Opcao("figuras");
    if (saida.isEmpty() || !FormatosDeSaida().contains(formato) || !QStringList{"nenhuma", "pequenas", "todas"}.contains(figuras)) {
        Reclamar("livro: diga o formato e onde gravar. Uso: " +
                 QString::fromUtf8(ComandoDe(pagina ? "pagina" : "exportar")->uso));
        return Livro::kMauUso;
    }
    const LivroAberto livro(LivroPedido());
    QList<ReceitaDoLivro> receitas;
    if (!Escolher(livro, m_linha.livres, receitas))
        return Livro::kFalhou;
    if (receitas.isEmpty())
        return Fracassar("O livro não tem receitas. Nada foi gravado.");
    Relato relato;
    const Saida tudo{livro, receitas, Opcao("pagina").toLatin1()};
    relato.DefinirArquivo(saida);
    const QString erro = pagina ? GravarPagina(tudo, saida, figuras, relato) : Formatos::Exportar(tudo, formato, saida, relato);
    const QFileInfo info(saida);
    if (Json()) {
        QJsonObject objeto{{"receitas", receitas.size() - relato.Puladas()}, {"formato", formato}, {"avisos", AvisosEmJson(relato)}};
        if (erro.isEmpty()) {
            objeto["saida"] = saida;
            if (info.isFile())
                objeto["bytes"] = info.size();
        } else {
            objeto["erro"] = erro;
        }
        DizerJson(objeto);
        return erro.isEmpty() ? Livro::kFeito : Livro::kFalhou;
    }
    DizerAvisos(relato);
    if (!erro.isEmpty())
        return Fracassar(erro);
    const qsizetype quantas = receitas.size() - relato.Puladas();
    Dizer(saida + ": " + QString::number(quantas) + (quantas == 1 ? " receita" : " receitas") +
          (info.isFile() ? ", " + Tamanho(info.size()) : QString()) + ".");
    return Livro::kFeito;
}

int Corrida::Verificar()
{
    if (m_linha.livres.size() > 1) {
        Reclamar("livro: um alvo de cada vez. Uso: " + QString::fromUtf8(ComandoDe("verificar")->uso));
        return Livro::kMauUso;
    }
    const QString alvo = m_linha.livres.isEmpty() ? LivroPedido() : m_linha.livres.first();
    const LivroAberto livro(alvo);
    QStringList achados = livro.Danos();
    QSet<QString> nomeadas;
    int comFigura = 0;
    for (const ReceitaDoLivro &r : livro.Receitas()) {
        if (r.receita.Figura.isEmpty())
            continue;
        ++comFigura;
        nomeadas.insert(r.receita.Figura.toLower());
        const QByteArray figura = livro.Figura(r);
        const QString quem = QString::number(r.numero) + " " + r.receita.Nome;
        if (figura.isEmpty())
            achados += "Falta a figura " + r.receita.Figura + " da receita " + quem + ".";
        else if (FormatoDaFigura(figura).isEmpty())
            achados += "A figura " + r.receita.Figura + " da receita " + quem + " não é uma imagem que se possa mostrar.";
    }
    if (livro.Qual() != LivroAberto::Especie::Pacote)
        for (const QString &nome : livro.Figuras())
            if (!nomeadas.contains(nome.toLower()))
                achados += "Nenhuma receita tem a figura " + nome + ".";
    if (livro.LinhasSemReceita() > 0)
        achados += QString::number(livro.LinhasSemReceita()) +
                   (livro.LinhasSemReceita() == 1 ? " linha de ingrediente não é de nenhuma receita."
                                                  : " linhas de ingredientes não são de nenhuma receita.");
    achados += livro.Integridade();
    static const QHash<int, QString> especies = {{static_cast<int>(LivroAberto::Especie::Livro), "livro"},
                                                 {static_cast<int>(LivroAberto::Especie::Access), "livro antigo (Access)"},
                                                 {static_cast<int>(LivroAberto::Especie::Copia), "cópia de segurança"},
                                                 {static_cast<int>(LivroAberto::Especie::Pacote), "pacote"}};
    const QString especie = especies.value(static_cast<int>(livro.Qual()));
    if (Json()) {
        DizerJson({{"alvo", alvo},
                   {"especie", especie},
                   {"receitas", livro.Receitas().size()},
                   {"linhas", livro.Linhas()},
                   {"figuras", comFigura},
                   {"inteiro", achados.isEmpty()},
                   {"achados", QJsonArray::fromStringList(achados)}});
    } else {
        Dizer(alvo + ": " + especie + ", " + QString::number(livro.Receitas().size()) + " receitas, " +
              QString::number(livro.Linhas()) + " linhas de ingredientes, " + QString::number(comFigura) + " figuras.");
        for (const QString &achado : std::as_const(achados))
            Dizer(achado);
        Dizer(achados.isEmpty() ? "Está inteiro." : QString::number(achados.size()) + (achados.size() == 1 ? " achado." : " achados."));
    }
    return achados.isEmpty() ? Livro::kFeito : Livro::kFalhou;
}

int Corrida::Listar()
{
    const LivroAberto livro(LivroPedido());
    QList<ReceitaDoLivro> receitas;
    if (!Escolher(livro, m_linha.livres, receitas))
        return Livro::kFalhou;
    if (Json()) {
        QJsonArray lista;
        for (const ReceitaDoLivro &r : std::as_const(receitas))
            lista.append(QJsonObject{{"numero", r.numero},
                                     {"nome", r.receita.Nome},
                                     {"tipo", r.receita.Classificacao},
                                     {"preparo", r.receita.Preparo},
                                     {"porcoes", SemZero(r.receita.Porcoes)},
                                     {"origem", r.receita.Origem},
                                     {"data", r.data},
                                     {"figura", !r.receita.Figura.isEmpty()}});
        m_ambiente.saida.write(QJsonDocument(lista).toJson());
        return Livro::kFeito;
    }
    for (const ReceitaDoLivro &r : std::as_const(receitas)) {
        QString linha = QString::number(r.numero).rightJustified(6) + "  " + r.receita.Nome;
        QStringList resto;
        for (const QString &parte : {r.receita.Classificacao, r.receita.Preparo})
            if (!parte.isEmpty())
                resto += parte;
        if (!resto.isEmpty())
            linha += "  (" + resto.join(", ") + ")";
        Dizer(linha);
    }
    return Livro::kFeito;
}

int Corrida::Mostrar()
{
    if (m_linha.livres.isEmpty()) {
        Reclamar("livro: diga o número ou o nome da receita. Uso: " + QString::fromUtf8(ComandoDe("mostrar")->uso));
        return Livro::kMauUso;
    }
    const LivroAberto livro(LivroPedido());
    QList<ReceitaDoLivro> receitas;
    if (!Escolher(livro, m_linha.livres, receitas))
        return Livro::kFalhou;
    QJsonArray lista;
    bool primeira = true;
    for (const ReceitaDoLivro &r : std::as_const(receitas)) {
        const Receita &receita = r.receita;
        if (Json()) {
            QJsonArray linhas;
            for (const Linha &linha : receita.Ingredientes)
                linhas.append(QJsonArray{linha.Quantidade, linha.Unidade, linha.Ingrediente});
            lista.append(QJsonObject{{"numero", r.numero},
                                     {"nome", receita.Nome},
                                     {"tipo", receita.Classificacao},
                                     {"porcoes", SemZero(receita.Porcoes)},
                                     {"preparo", receita.Preparo},
                                     {"calorias", SemZero(receita.Calorias)},
                                     {"tipoCalorias", receita.Tipo_Calorias},
                                     {"origem", receita.Origem},
                                     {"data", r.data},
                                     {"modo", receita.Modo},
                                     {"observacao", receita.Observacao},
                                     {"figura", receita.Figura},
                                     {"linhas", linhas}});
            continue;
        }
        if (!primeira)
            Dizer(QString());
        primeira = false;
        Dizer(receita.Nome);
        Dizer(QString(receita.Nome.size(), u'='));
        const auto campo = [&](const char *rotulo, const QString &valor) {
            if (!valor.isEmpty())
                Dizer(QString::fromUtf8(rotulo) + ": " + valor);
        };
        campo("Tipo", receita.Classificacao);
        campo("Porções", SemZero(receita.Porcoes));
        campo("Tempo de preparo", receita.Preparo);
        if (const QString calorias = SemZero(receita.Calorias); !calorias.isEmpty())
            campo("Calorias", calorias + (receita.Tipo_Calorias == "R"   ? " (receita)"
                                          : receita.Tipo_Calorias == "P" ? " (porção)"
                                                                         : ""));
        campo("Origem", receita.Origem);
        Dizer("\nIngredientes");
        for (const Linha &linha : receita.Ingredientes)
            Dizer((ETitulo(linha) ? "  " : "  - ") + TextoDaLinha(linha));
        Dizer("\nModo de preparar");
        for (const QString &paragrafo : Linhas(QString(receita.Modo).replace("\r\n", "\n")))
            Dizer("  " + paragrafo);
        if (!receita.Observacao.isEmpty()) {
            Dizer("\nObservações");
            for (const QString &paragrafo : Linhas(QString(receita.Observacao).replace("\r\n", "\n")))
                Dizer("  " + paragrafo);
        }
    }
    if (Json())
        m_ambiente.saida.write(QJsonDocument(lista).toJson());
    return Livro::kFeito;
}
} // namespace

QString Livro::Ajuda(const QString &comando)
{
    if (!comando.isEmpty()) {
        const Comando *c = ComandoDe(comando);
        if (!c)
            return {};
        return "Uso: " + QString::fromUtf8(c->uso) + "\n\n" + QString::fromUtf8(c->resumo) + "\n\n" + QString::fromUtf8(c->opcoes) +
               "      --json        resultado em JSON\n  -h, --help        esta ajuda\n";
    }
    QString texto = "Uso: livro COMANDO [OPÇÃO]... [ARGUMENTO]...\n\n"
                    "Leva receitas para dentro e para fora do livro do Cozinhario 2005. Só lê o livro: o que entra passa\n"
                    "pela importação do próprio programa, e o programa pode estar aberto.\n\n";
    for (const Comando &c : kComandos)
        texto += "  " + QString::fromUtf8(c.nome).leftJustified(11) + QString::fromUtf8(c.resumo) + "\n";
    return texto + "\n\"livro COMANDO --help\" explica cada um. Sem --de, o livro é o da pasta do programa, o da pasta de dados\n"
                   "do usuário ou o da pasta atual, o primeiro que houver.\n"
                   "Sai com 0 se deu certo, 1 se não deu (ou se a verificação achou algo), 2 se o comando está errado.\n";
}

int Livro::Executar(const QStringList &argumentos, const Ambiente &ambiente)
{
    const QString nome = argumentos.value(0);
    const auto dizer = [](QIODevice &onde, const QString &texto) { onde.write(texto.toUtf8()); };
    if (nome.isEmpty()) {
        dizer(ambiente.erros, Ajuda());
        return kMauUso;
    }
    if (nome == "--help" || nome == "-h" || nome == "--ajuda" || nome == "ajuda" || nome == "help") {
        const QString ajuda = Ajuda(argumentos.value(1));
        if (ajuda.isEmpty()) {
            dizer(ambiente.erros, "livro: não há o comando \"" + argumentos.value(1) + "\".\n");
            return kMauUso;
        }
        dizer(ambiente.saida, ajuda);
        return kFeito;
    }
    if (nome == "--version" || nome == "--versao") {
        dizer(ambiente.saida, "livro (Cozinhario 2005) " COZINHARIO_VERSAO "\n");
        return kFeito;
    }
    if (!ComandoDe(nome)) {
        dizer(ambiente.erros, "livro: não há o comando \"" + nome + "\". \"livro --help\" mostra os que há.\n");
        return kMauUso;
    }
    static const QHash<QString, QStringList> comValor = {{"converter", {"saida", "pagina"}},
                                                         {"abrir", {"programa", "pagina"}},
                                                         {"exportar", {"saida", "de", "formato", "pagina"}},
                                                         {"pagina", {"saida", "de", "figuras"}},
                                                         {"verificar", {"de"}},
                                                         {"listar", {"de"}},
                                                         {"mostrar", {"de"}}};
    const LinhaDeComando linha = Separar(argumentos.mid(1), comValor.value(nome));
    if (linha.chaves.contains("help")) {
        dizer(ambiente.saida, Ajuda(nome));
        return kFeito;
    }
    if (!linha.erro.isEmpty()) {
        dizer(ambiente.erros, "livro: " + linha.erro + " \"livro " + nome + " --help\" explica.\n");
        return kMauUso;
    }
    if (const QString pagina = linha.valores.value("pagina"); !pagina.isEmpty() && !PaginaConhecida(pagina.toLatin1())) {
        dizer(ambiente.erros, "livro: página de código desconhecida: " + pagina + "\n");
        return kMauUso;
    }
    Corrida corrida(linha, ambiente);
    try {
        if (nome == "converter")
            return corrida.Converter();
        if (nome == "abrir")
            return corrida.Abrir();
        if (nome == "exportar" || nome == "pagina")
            return corrida.Exportar(nome == "pagina");
        if (nome == "verificar")
            return corrida.Verificar();
        if (nome == "listar")
            return corrida.Listar();
        return corrida.Mostrar();
    } catch (const std::exception &erro) {
        const QString texto = QString::fromUtf8(erro.what());
        if (linha.chaves.contains("json"))
            ambiente.saida.write(QJsonDocument(QJsonObject{{"erro", texto}}).toJson());
        else
            dizer(ambiente.erros, "livro: " + texto + "\n");
        return kFalhou;
    }
}
