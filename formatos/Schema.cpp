#include "formatos/Schema.h"

#include "formatos/EscritorJson.h"
#include "formatos/Json.h"
#include "formatos/Limpeza.h"
#include "formatos/LinhaDeIngrediente.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QUrl>

#include <algorithm>
#include <array>
#include <utility>

namespace
{
using namespace Formatos;

/// Whether the object's @type is, among others, `nome`; what stands before the last "/", "#" or ":" aside.
bool EDoTipo(const QJsonObject &objeto, const char *nome)
{
    for (const QString &tipo : TextosDe(Campo(objeto, "@type"))) {
        const qsizetype corte = std::max({tipo.lastIndexOf(u'/'), tipo.lastIndexOf(u'#'), tipo.lastIndexOf(u':')});
        if (tipo.sliced(corte + 1).trimmed().compare(QLatin1String(nome), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool Vazio(const QJsonValue &valor)
{
    if (valor.isArray())
        return valor.toArray().isEmpty();
    if (valor.isString())
        return valor.toString().trimmed().isEmpty();
    return valor.isNull() || valor.isUndefined();
}

bool EHttp(const QString &texto)
{
    return texto.startsWith("http://", Qt::CaseInsensitive) || texto.startsWith("https://", Qt::CaseInsensitive);
}

QByteArray DeDataUri(const QString &uri)
{
    const qsizetype virgula = uri.indexOf(u',');
    if (virgula < 0)
        return {};
    const QByteArray corpo = QStringView(uri).sliced(virgula + 1).toLatin1();
    if (QStringView(uri).first(virgula).contains(u";base64", Qt::CaseInsensitive))
        return QByteArray::fromBase64(QByteArray::fromPercentEncoding(corpo));
    return QByteArray::fromPercentEncoding(corpo);
}

QString NomeDoArquivo(const QString &endereco)
{
    QString nome = endereco;
    for (const QChar fim : {u'?', u'#'})
        if (const qsizetype i = nome.indexOf(fim); i >= 0)
            nome.truncate(i);
    nome = QUrl::fromPercentEncoding(nome.toUtf8());
    return nome.sliced(nome.lastIndexOf(u'/') + 1);
}

struct Nutriente {
    const char *campo;
    const char *nome;
};
constexpr std::array<Nutriente, 8> kNutrientes = {{{"proteinContent", "proteínas"},
                                                   {"carbohydrateContent", "carboidratos"},
                                                   {"fatContent", "gorduras"},
                                                   {"saturatedFatContent", "gorduras saturadas"},
                                                   {"fiberContent", "fibras"},
                                                   {"sugarContent", "açúcares"},
                                                   {"sodiumContent", "sódio"},
                                                   {"cholesterolContent", "colesterol"}}};
} // namespace

void LeitorSchema::AcrescentarBloco(const QJsonValue &bloco)
{
    Indexar(bloco);
    Recolher(bloco);
}

void LeitorSchema::Indexar(const QJsonValue &valor)
{
    if (valor.isArray()) {
        const QJsonArray lista = valor.toArray();
        for (const QJsonValue elemento : lista)
            Indexar(elemento);
    } else if (valor.isObject()) {
        const QJsonObject objeto = valor.toObject();
        if (objeto.size() > 1)
            if (const QString id = Campo(objeto, "@id").toString(); !id.isEmpty() && !m_porId.contains(id))
                m_porId.insert(id, objeto);
        if (m_siteNome.isEmpty() && EDoTipo(objeto, "WebSite"))
            m_siteNome = SemSlogan(LimparLinha(TextoDe(Campo(objeto, "name"))));
        for (const QJsonValue elemento : objeto)
            if (elemento.isArray() || elemento.isObject())
                Indexar(elemento);
    }
}

bool LeitorSchema::EReceita(const QJsonObject &objeto) const
{
    const bool linhas = !Vazio(Campo(objeto, "recipeIngredient")) || !Vazio(Campo(objeto, "ingredients"));
    const bool passos = !Vazio(Campo(objeto, "recipeInstructions"));
    if (EDoTipo(objeto, "Recipe"))
        return linhas || passos || objeto.contains(kChaveNossa) || (!m_pagina && !Vazio(Campo(objeto, "name")));
    if (m_pagina)
        return false;
    return !Vazio(Campo(objeto, "name")) &&
           (objeto.contains("recipeIngredient") || objeto.contains("recipe_ingredient") ||
            (Campo(objeto, "steps").isArray() && objeto.contains("working_time")));
}

void LeitorSchema::Recolher(const QJsonValue &valor)
{
    if (valor.isArray()) {
        const QJsonArray lista = valor.toArray();
        for (const QJsonValue elemento : lista)
            Recolher(elemento);
        return;
    }
    if (!valor.isObject())
        return;
    const QJsonObject objeto = valor.toObject();
    if (!EReceita(objeto)) {
        for (const QJsonValue elemento : objeto)
            Recolher(elemento);
        return;
    }
    // A page repeats its recipe; a program's file has every recipe once, of whatever name.
    const QString id = Campo(objeto, "@id").toString();
    const QString nome = Dobrar(LimparLinha(TextoDe(Campo(objeto, "name"))));
    const bool nossa = objeto.contains(kChaveNossa);
    qsizetype igual = -1;
    if (m_pagina && !id.isEmpty() && m_porNome.contains("@" + id))
        igual = m_porNome.value("@" + id);
    else if (m_pagina && !nossa && !nome.isEmpty() && m_porNome.contains(nome))
        igual = m_porNome.value(nome);
    if (igual >= 0) {
        QJsonObject &primeira = m_receitas[igual];
        for (auto it = objeto.constBegin(); it != objeto.constEnd(); ++it)
            if (Vazio(primeira.value(it.key())))
                primeira.insert(it.key(), *it);
        return;
    }
    if (!id.isEmpty())
        m_porNome.insert("@" + id, m_receitas.size());
    if (!nome.isEmpty())
        m_porNome.insert(nome, m_receitas.size());
    m_receitas += objeto;
}

QJsonValue LeitorSchema::Resolver(const QJsonValue &valor) const
{
    if (!valor.isObject())
        return valor;
    const QJsonObject objeto = valor.toObject();
    if (objeto.size() != 1)
        return valor;
    const auto achado = m_porId.constFind(Campo(objeto, "@id").toString());
    return achado == m_porId.constEnd() ? valor : QJsonValue(*achado);
}

QList<Receita> LeitorSchema::Ler(const DadosDaPagina &dados)
{
    QList<Receita> receitas;
    for (const QJsonObject &objeto : m_receitas)
        if (const std::optional<Receita> receita = LerUma(objeto, dados))
            receitas += *receita;
    return receitas;
}

std::optional<Receita> LeitorSchema::LerUma(const QJsonObject &objeto, const DadosDaPagina &dados)
{
    const std::optional<Receita> exata = ReceitaExata(objeto);
    if (!exata)
        return Montar(LerRascunho(objeto, dados), m_relato);
    // Our own file. What another program has not touched since goes back to what it was, to the letter.
    const QStringList tocados = CamposTocados(*exata, objeto);
    std::optional<Receita> receita = exata;
    if (!tocados.isEmpty()) {
        receita = Montar(LerRascunho(objeto, dados), m_relato);
        if (!receita)
            return receita;
        DevolverExatos(*exata, tocados, *receita);
        return receita;
    }
    m_relato.DefinirReceita(receita->Nome);
    receita->DadosFigura = LerFigura(objeto, dados);
    if (receita->DadosFigura.isEmpty())
        receita->Figura.clear();
    return receita;
}

Rascunho LeitorSchema::LerRascunho(const QJsonObject &objeto, const DadosDaPagina &dados)
{
    Rascunho r;
    r.markdown = !m_pagina;
    r.nome = TextoDe(Campo(objeto, "name"));
    m_relato.DefinirReceita(LimparLinha(r.nome));
    if (r.nome.trimmed().isEmpty())
        r.nome = TextoDe(Campo(objeto, "headline"));

    const QJsonValue tipo = Campo(objeto, "recipeCategory");
    r.tiposNumTexto = tipo.isString();
    if (tipo.isString() || tipo.isObject())
        r.tipos = TextosDe(tipo);
    else if (tipo.isArray())
        for (const QJsonValue elemento : tipo.toArray())
            if (elemento.isString() || elemento.isObject())
                r.tipos += TextosDe(elemento);

    const double servidas = NumeroDe(Campo(objeto, "recipeServings"));
    if (servidas > 0)
        r.rendimento += QString::number(servidas, 'g', 10);
    QStringList rendimento = TextosDe(Campo(objeto, "recipeYield"));
    if (rendimento.isEmpty())
        rendimento = TextosDe(Campo(objeto, "yield"));
    if (const QJsonObject valor = Campo(objeto, "recipeYield").toObject(); !valor.isEmpty()) {
        const QString numero = TextoDe(Campo(valor, "value"));
        if (!numero.isEmpty())
            rendimento = {(numero + u' ' + TextoDe(Campo(valor, "unitText"))).trimmed()};
    }
    if (const double quantos = NumeroDe(Campo(objeto, "recipeYieldQuantity")); quantos > 0)
        r.rendimento += (QString::number(quantos, 'g', 10) + u' ' + rendimento.value(0)).trimmed();
    else
        r.rendimento += rendimento;

    r.tempoTotal = TextoDe(Campo(objeto, "totalTime"));
    r.tempoPreparo = TextoDe(Campo(objeto, "prepTime"));
    r.tempoCozimento = TextoDe(Campo(objeto, "cookTime"));
    if (r.tempoCozimento.trimmed().isEmpty())
        r.tempoCozimento = TextoDe(Campo(objeto, "performTime"));

    LerNutricao(objeto, r);
    LerOrigem(objeto, dados, r);
    r.descricao = TextosDe(Campo(objeto, "description"));
    if (!m_pagina) {
        for (const QJsonValue nota : Campo(objeto, "notes").toArray()) {
            const QString titulo = TextoDe(Campo(nota.toObject(), "title")).trimmed();
            const QString texto = nota.isObject() ? TextoDe(Campo(nota.toObject(), "text")) : TextoDe(nota);
            r.notas += titulo.isEmpty() ? texto : titulo + ": " + texto;
        }
        if (Campo(objeto, "notes").isString())
            r.notas += Campo(objeto, "notes").toString();
        // Remarks of the author; what visitors say has an author of its own.
        for (const QJsonValue comentario : Campo(objeto, "comment").toArray())
            if (Vazio(Campo(comentario.toObject(), "author")))
                r.notas += TextoDe(Campo(comentario.toObject(), "text"));
    }
    r.utensilios = TextosDe(Campo(objeto, "tool"));
    if (r.utensilios.isEmpty())
        r.utensilios = TextosDe(Campo(objeto, "tools"));

    if (Campo(objeto, "steps").isArray() && Vazio(Campo(objeto, "recipeInstructions"))) {
        LerEtapas(objeto, r);
    } else {
        const QJsonValue linhas = Campo(objeto, "recipeIngredient");
        LerIngredientes(Vazio(linhas) ? Campo(objeto, "ingredients") : linhas, r);
        LerPassos(Campo(objeto, "recipeInstructions"), r);
    }
    r.figura = LerFigura(objeto, dados);
    return r;
}

void LeitorSchema::LerOrigem(const QJsonObject &objeto, const DadosDaPagina &dados, Rascunho &r)
{
    r.fontes += TextoDe(Campo(objeto, "creditText"));
    if (!m_pagina)
        r.fontes += TextoDe(Campo(objeto, "source"));
    r.fontes += TextoDe(Resolver(Campo(objeto, "publisher")));
    r.fontes += SemSlogan(LimparLinha(dados.siteNome));
    r.fontes += m_siteNome;
    const QJsonValue autores = Campo(objeto, "author");
    QStringList nomes;
    const QJsonArray lista = autores.isArray() ? autores.toArray() : QJsonArray{autores};
    for (const QJsonValue autor : lista) {
        const QJsonValue inteiro = Resolver(autor);
        const QString nome = inteiro.isObject() ? TextoDe(Campo(inteiro.toObject(), "name")) : TextoDe(inteiro);
        if (const QString limpo = nome.trimmed(); !limpo.isEmpty() && !nomes.contains(limpo))
            nomes += limpo;
    }
    r.autor = nomes.join(", ");
    const auto endereco = [&](const QJsonValue &valor) {
        const QJsonValue um = valor.isArray() ? valor.toArray().at(0) : valor;
        QString texto;
        if (um.isObject()) {
            texto = TextoDe(Campo(um.toObject(), "url"));
            if (!EHttp(texto))
                texto = Campo(um.toObject(), "@id").toString();
        } else {
            texto = um.toString();
        }
        if (r.url.isEmpty() && EHttp(texto.trimmed()))
            r.url = texto.trimmed();
    };
    for (const char *campo : {"url", "orgURL", "source_url", "isBasedOn", "mainEntityOfPage"})
        endereco(Campo(objeto, campo));
    if (EHttp(dados.endereco) && r.url.isEmpty())
        r.url = dados.endereco;
}

void LeitorSchema::LerNutricao(const QJsonObject &objeto, Rascunho &r)
{
    QJsonValue valor = Resolver(Campo(objeto, "nutrition"));
    if (valor.isArray()) {
        QJsonValue com;
        for (const QJsonValue elemento : valor.toArray())
            if (com.isNull() && !Vazio(Campo(elemento.toObject(), "calories")))
                com = elemento;
        valor = com.isNull() ? valor.toArray().at(0) : com;
    }
    const QJsonObject nutricao = valor.toObject();
    r.calorias = TextoDe(Campo(nutricao, "calories"));
    r.porcaoDasCalorias = TextoDe(Campo(nutricao, "servingSize"));
    for (const Nutriente &nutriente : kNutrientes)
        if (const QString texto = TextoDe(Campo(nutricao, nutriente.campo)).trimmed(); !texto.isEmpty())
            r.nutrientes += QString::fromUtf8(nutriente.nome) + u' ' + texto;
}

void LeitorSchema::LerIngredientes(const QJsonValue &valor, Rascunho &r)
{
    const QJsonValue inteiro = Resolver(valor);
    if (inteiro.isArray()) {
        for (const QJsonValue elemento : inteiro.toArray())
            LerIngredientes(elemento, r);
    } else if (inteiro.isObject()) {
        LerIngrediente(inteiro.toObject(), r);
    } else {
        r.Texto(TextoDe(inteiro));
    }
}

void LeitorSchema::LerIngrediente(const QJsonObject &objeto, Rascunho &r)
{
    for (const char *lista : {"itemListElement", "item"})
        if (const QJsonValue elementos = Campo(objeto, lista); !Vazio(elementos)) {
            if (const QString nome = TextoDe(Campo(objeto, "name")); !nome.trimmed().isEmpty() && elementos.isArray())
                r.Titulo(nome);
            LerIngredientes(elementos, r);
            return;
        }
    if (const QString titulo = TextoDe(Campo(objeto, "title")); !titulo.trimmed().isEmpty())
        r.Titulo(titulo);
    const QJsonValue alimento = Campo(objeto, "food");
    const QString nota = TextoDe(Campo(objeto, "note"));
    if (Campo(objeto, "is_header").toBool()) {
        r.Titulo(nota.trimmed().isEmpty() ? TextoDe(alimento) : nota);
        return;
    }
    if (objeto.contains("food") || objeto.contains("note") || objeto.contains("display")) {
        if (TextoDe(alimento).trimmed().isEmpty()) {
            for (const QString &texto : {nota, TextoDe(Campo(objeto, "originalText")), TextoDe(Campo(objeto, "display"))})
                if (!texto.trimmed().isEmpty()) {
                    r.Texto(texto);
                    return;
                }
            return;
        }
        LinhaLida linha;
        linha.tipo = LinhaLida::Tipo::Partes;
        const QJsonValue quantidade = objeto.contains("amount") ? Campo(objeto, "amount") : Campo(objeto, "quantity");
        double numero = 0;
        if (quantidade.isDouble()) {
            numero = quantidade.toDouble();
            linha.quantidade = QuantidadeDoNumero(numero);
        } else {
            linha.quantidade = TextoDe(quantidade);
            numero = UltimoNumero(linha.quantidade);
        }
        if (Campo(objeto, "no_amount").toBool()) {
            linha.quantidade.clear();
            numero = 0;
        }
        const auto nome = [&](const QJsonValue &valor, bool plural) {
            const QString varios = TextoDe(Campo(valor.toObject(), "pluralName")).trimmed();
            return plural && !varios.isEmpty() ? varios : TextoDe(valor);
        };
        const QJsonValue unidade = Campo(objeto, "unit");
        linha.unidade = nome(unidade, numero >= 2);
        linha.ingrediente = nome(alimento, numero >= 2 && linha.unidade.trimmed().isEmpty());
        linha.observacao = nota;
        r.linhas += linha;
        return;
    }
    const QString nome = TextoDe(Campo(objeto, "name"));
    if (const QJsonValue valor = Campo(objeto, "value"); !Vazio(valor)) {
        LinhaLida linha;
        linha.tipo = LinhaLida::Tipo::Partes;
        linha.quantidade = valor.isDouble() ? QuantidadeDoNumero(valor.toDouble()) : TextoDe(valor);
        linha.unidade = TextoDe(Campo(objeto, "unitText"));
        linha.ingrediente = nome;
        r.linhas += linha;
        return;
    }
    QString texto = TextoDe(Campo(objeto, "requiredQuantity"));
    if (const QJsonObject medida = Campo(objeto, "requiredQuantity").toObject(); !medida.isEmpty())
        texto = TextoDe(Campo(medida, "value")) + u' ' + TextoDe(Campo(medida, "unitText"));
    r.Texto((texto + u' ' + (nome.isEmpty() ? TextoDe(objeto) : nome)).trimmed());
}

void LeitorSchema::LerPassos(const QJsonValue &valor, Rascunho &r)
{
    const QJsonValue inteiro = Resolver(valor);
    if (inteiro.isArray()) {
        for (const QJsonValue elemento : inteiro.toArray())
            LerPassos(elemento, r);
        return;
    }
    if (!inteiro.isObject()) {
        if (const QString texto = TextoDe(inteiro); !texto.isEmpty())
            r.passos += PassoLido{{}, texto};
        return;
    }
    const QJsonObject objeto = inteiro.toObject();
    const QString nome = TextoDe(Campo(objeto, "name"));
    for (const char *lista : {"itemListElement", "item", "steps"}) {
        const QJsonValue elementos = Campo(objeto, lista);
        if (Vazio(elementos))
            continue;
        const qsizetype antes = r.passos.size();
        LerPassos(elementos, r);
        if (r.passos.size() == antes || nome.trimmed().isEmpty())
            return;
        QString inicio = LimparLinha(nome);
        while (inicio.endsWith(u'.') || inicio.endsWith(u'…') || inicio.endsWith(u':'))
            inicio.chop(1);
        if (!LimparLinha(r.passos[antes].texto).startsWith(inicio, Qt::CaseInsensitive))
            r.passos.insert(antes, PassoLido{nome, {}});
        return;
    }
    if (const QString secao = TextoDe(Campo(objeto, "title")); !secao.trimmed().isEmpty())
        r.passos += PassoLido{secao, {}};
    QString texto = TextosDe(Campo(objeto, "text")).join(u'\n');
    if (texto.isNull())
        texto = TextoDe(Campo(objeto, "description"));
    const QString titulo = nome.trimmed().isEmpty() ? TextoDe(Campo(objeto, "summary")) : nome;
    r.passos += PassoLido{titulo, texto.isNull() ? QString("") : texto};
}

/// Steps that carry their own ingredients.
void LeitorSchema::LerEtapas(const QJsonObject &objeto, Rascunho &r)
{
    const auto ordenar = [](const QJsonArray &lista) {
        QList<QJsonObject> itens;
        for (const QJsonValue item : lista)
            itens += item.toObject();
        std::stable_sort(itens.begin(), itens.end(), [](const QJsonObject &a, const QJsonObject &b) {
            return NumeroDe(Campo(a, "order")) < NumeroDe(Campo(b, "order"));
        });
        return itens;
    };
    r.tipoDasCalorias.clear();
    for (const QJsonValue palavra : Campo(objeto, "keywords").toArray())
        r.tipos += TextoDe(palavra);
    r.tiposNumTexto = false;
    const double servidas = NumeroDe(Campo(objeto, "servings"));
    if (servidas > 0)
        r.rendimento = {(QString::number(servidas, 'g', 10) + u' ' + TextoDe(Campo(objeto, "servings_text"))).trimmed()};
    r.tempoPreparo = TextoDe(Campo(objeto, "working_time"));
    r.tempoCozimento = TextoDe(Campo(objeto, "waiting_time"));
    for (const QJsonObject &etapa : ordenar(Campo(objeto, "steps").toArray())) {
        for (const QJsonObject &ingrediente : ordenar(Campo(etapa, "ingredients").toArray()))
            LerIngrediente(ingrediente, r);
        const QString texto = TextoDe(Campo(etapa, "instruction"));
        r.passos += PassoLido{TextoDe(Campo(etapa, "name")), texto.isNull() ? QString("") : texto};
    }
}

QStringList LeitorSchema::EnderecosDaFigura(const QJsonValue &valor) const
{
    QStringList enderecos;
    if (valor.isArray()) {
        for (const QJsonValue elemento : valor.toArray())
            enderecos += EnderecosDaFigura(elemento);
    } else if (valor.isObject()) {
        const QJsonObject objeto = Resolver(valor).toObject();
        for (const char *campo : {"contentUrl", "url", "thumbnailUrl", "@id"})
            if (const QString endereco = Campo(objeto, campo).toString().trimmed(); !endereco.isEmpty())
                enderecos += endereco;
    } else if (const QString endereco = valor.toString().trimmed(); !endereco.isEmpty()) {
        enderecos += endereco;
    }
    return enderecos;
}

QByteArray LeitorSchema::LerFigura(const QJsonObject &objeto, const DadosDaPagina &dados)
{
    QByteArray estranha; // found, but of a kind that the book does not show: only if there is nothing better
    const auto serve = [&](const QByteArray &bytes) {
        if (!FormatoDaFigura(bytes).isEmpty())
            return true;
        if (estranha.isEmpty() && !bytes.isEmpty())
            estranha = bytes;
        return false;
    };
    QByteArray bytes;
    const auto tentar = [&](const std::optional<QByteArray> &achado) {
        if (!achado || !serve(*achado))
            return false;
        bytes = *achado;
        return true;
    };
    // The picture as it was, if the copy for others is still the one we wrote.
    if (const FiguraExata exata = FiguraNossa(objeto); !exata.nome.isEmpty()) {
        const std::optional<QByteArray> copia = m_entrada.AoLado("full.jpg");
        if (copia && QCryptographicHash::hash(*copia, QCryptographicHash::Sha256).toHex() == exata.sha256DaCopia &&
            tentar(m_entrada.AoLado(exata.nome)))
            return bytes;
    }
    const QStringList enderecos = EnderecosDaFigura(Campo(objeto, "image"));
    for (QString endereco : enderecos) {
        if (endereco.startsWith(u'#'))
            endereco = dados.imagensPorId.value(endereco.sliced(1), endereco);
        if (endereco.startsWith("data:", Qt::CaseInsensitive)) {
            if (tentar(DeDataUri(endereco)))
                return bytes;
            continue;
        }
        if (const auto parte = dados.partes.constFind(endereco); parte != dados.partes.constEnd() && tentar(*parte))
            return bytes;
        if (!endereco.contains("://") && tentar(m_entrada.AoLado(QUrl::fromPercentEncoding(endereco.toUtf8()))))
            return bytes;
        const QString nome = NomeDoArquivo(endereco);
        if (nome.isEmpty())
            continue;
        for (const QString &src : dados.imagens)
            if (!src.contains("://") && !src.startsWith("data:") && NomeDoArquivo(src).compare(nome, Qt::CaseInsensitive) == 0) {
                QString caminho = src;
                if (const qsizetype i = caminho.indexOf(u'?'); i >= 0)
                    caminho.truncate(i);
                if (tentar(m_entrada.AoLado(QUrl::fromPercentEncoding(caminho.toUtf8()))))
                    return bytes;
            }
    }
    // What lies beside a file of many recipes belongs to none of them.
    if (!m_pagina && m_receitas.size() == 1)
        for (const char *lugar : {"full.jpg", "full.png", "full.webp", "image.jpg", "image.jpeg", "image.png", "image.gif",
                                  "image.webp", "images/original.jpg", "images/original.png", "images/original.webp"})
            if (tentar(m_entrada.AoLado(lugar)))
                return bytes;
    if (estranha.isEmpty() && !enderecos.isEmpty())
        m_relato.FaltaFigura("A figura não está junto do arquivo: " + enderecos.first().left(200));
    return estranha;
}
