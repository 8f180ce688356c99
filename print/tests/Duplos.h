#pragma once

#include "base/Avisos.h"
#include "base/PainelMensagem.h"
#include "print/ErroImpressao.h"
#include "print/Impressoras.h"
#include "print/frmImpressao.h"

#include <QApplication>
#include <QFile>
#include <QPageLayout>
#include <QPrinter>
#include <QStringList>
#include <QTimer>

#include <functional>

// What stands in for the world around the print routes.

class AvisosDeTeste : public Avisos
{
public:
    void Avisar(const QString &texto, Icone icone) override
    {
        textos << texto;
        icones << icone;
    }
    bool Perguntar(const QString &) override { return false; }
    QStringList textos;
    QList<Icone> icones;
};

/// Writes down what the message panel was told, e.g. "mostrar 3: Efetuando..."
class PainelDeTeste : public PainelMensagem
{
public:
    void Mostrar(const QString &texto, int maximo) override
    {
        diario << QStringLiteral("mostrar %1: %2").arg(maximo).arg(texto);
    }
    void DefinirMaximo(int maximo) override { diario << QStringLiteral("maximo %1").arg(maximo); }
    void DefinirValor(int valor) override
    {
        diario << QString::number(valor);
        if (aoAvancar)
            aoAvancar(valor);
    }
    void Esconder() override { diario << QStringLiteral("esconder"); }
    QStringList diario;
    std::function<void(int)> aoAvancar;
};

/// A PDF file that is there when the job was handed over, and only then.
class SaidaEmArquivo : public SaidaImpressao
{
public:
    explicit SaidaEmArquivo(const QString &arquivo)
        : m_arquivo(arquivo)
    {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        m_printer.setOutputFileName(m_arquivo + ".parte");
    }
    ~SaidaEmArquivo() override { QFile::remove(m_arquivo + ".parte"); }
    QPrinter &Printer() override { return m_printer; }
    void Entregar() override
    {
        if (!QFile::rename(m_arquivo + ".parte", m_arquivo))
            throw ErroImpressao("O Arquivo não pôde ser Gravado. O Documento não foi Impresso!");
    }

private:
    QString m_arquivo;
    QPrinter m_printer{QPrinter::HighResolution};
};

/// Printers that write PDF files into a folder: trabalho1.pdf, trabalho2.pdf ...
class ImpressorasDeTeste : public Impressoras
{
public:
    explicit ImpressorasDeTeste(const QString &pasta = QString())
        : m_pasta(pasta)
    {
    }
    QStringList Nomes() const override { return nomes; }
    ImpressoraAtual Padrao() const override
    {
        return nomes.isEmpty() ? ImpressoraAtual() : Configuracao(padrao);
    }
    ImpressoraAtual Configuracao(const QString &nome) const override
    {
        ImpressoraAtual atual = propria;
        atual.DeviceName = nome;
        return atual;
    }
    std::unique_ptr<SaidaImpressao> Criar(const ImpressoraAtual &atual,
                                          const QString &documento) const override
    {
        pedidas << atual;
        documentos << documento;
        auto saida = std::make_unique<SaidaEmArquivo>(Arquivo(static_cast<int>(pedidas.size())));
        QPrinter &printer = saida->Printer();
        printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                          QMarginsF(6, 6, 6, 6), QPageLayout::Millimeter));
        printer.setPageOrientation(atual.Orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
        if (resolucao > 0)
            printer.setResolution(resolucao);
        return saida;
    }
    QString Arquivo(int trabalho) const
    {
        return m_pasta.isEmpty() ? QStringLiteral("/dev/full/nada.pdf")
                                 : m_pasta + QStringLiteral("/trabalho%1.pdf").arg(trabalho);
    }

    QStringList nomes{"Cozinha", "Sala"};
    QString padrao = "Cozinha";
    ImpressoraAtual propria{"", 1, 1, -3, 1}; ///< what a freshly chosen printer reports of itself
    int resolucao = 0;
    mutable QList<ImpressoraAtual> pedidas;
    mutable QStringList documentos;

private:
    QString m_pasta;
};

/// Sits before the screen: counts the options dialogs that open and deals with each in the way set.
class Operador : public QObject
{
public:
    Operador() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *objeto, QEvent *evento) override
    {
        auto *dialogo = qobject_cast<frmImpressao *>(objeto);
        if (dialogo && evento->type() == QEvent::Show) {
            ++dialogos;
            QTimer::singleShot(0, dialogo, [this, dialogo] { aoAbrir(*dialogo); });
        }
        return false;
    }
    int dialogos = 0;
    std::function<void(frmImpressao &)> aoAbrir;
};
