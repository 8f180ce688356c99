#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

/// The real program, copied into a folder of its own and driven by scripts.
class Programa
{
public:
    Programa() { QFile::copy(QStringLiteral(CAMINHO_PROGRAMA), Pasta("cozinhario")); }

    QString Pasta(const QString &nome = {}) const
    {
        return nome.isEmpty() ? m_pasta.path() : m_pasta.filePath(nome);
    }

    /// Plays the script and returns the exit status; 3 means that a command could not be carried out.
    /// What went wrong is in Erro().
    int Tocar(const QString &roteiro, const QStringList &argumentos = {})
    {
        QFile arquivo(m_trabalho.filePath("roteiro"));
        if (!arquivo.open(QIODevice::WriteOnly))
            return -1;
        arquivo.write(roteiro.toUtf8());
        arquivo.close();
        QProcess processo;
        Preparar(processo);
        QProcessEnvironment ambiente = processo.processEnvironment();
        ambiente.insert("QT_QPA_GENERIC_PLUGINS", "roteiro:" + arquivo.fileName());
        ambiente.insert("QT_PLUGIN_PATH", CAMINHO_PLUGIN);
        processo.setProcessEnvironment(ambiente);
        processo.start(Pasta("cozinhario"), argumentos);
        if (!processo.waitForFinished(100'000)) {
            processo.kill();
            processo.waitForFinished();
            m_erro = "o programa não terminou";
            return -1;
        }
        // The offscreen platform grumbles about what it cannot do; the player's own line is what matters.
        m_erro = QString::fromUtf8(processo.readAllStandardError());
        if (const qsizetype linha = m_erro.indexOf("roteiro, linha"); linha >= 0)
            m_erro = m_erro.mid(linha);
        return processo.exitStatus() == QProcess::NormalExit ? processo.exitCode() : -2;
    }

    QString Erro() const { return m_erro; }

    /// What the program runs on from now on: a screen of so many pixels, at that scale of the desktop.
    void DefinirTela(const QSize &pixels, double escala)
    {
        QFile arquivo(m_trabalho.filePath("telas.json"));
        if (arquivo.open(QIODevice::WriteOnly))
            arquivo.write(
                QString(R"({"screens": [{"name": "tela", "x": 0, "y": 0, "width": %1, "height": %2,)"
                        R"( "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})")
                    .arg(pixels.width())
                    .arg(pixels.height())
                    .toUtf8());
        m_plataforma = "offscreen:configfile=" + arquivo.fileName();
        m_escala = QString::number(escala);
    }

    /// The program's surroundings: no display, no desktop, a home of its own, Brazilian Portuguese.
    void Preparar(QProcess &processo) const
    {
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("QT_QPA_PLATFORM", m_plataforma);
        if (!m_escala.isEmpty())
            ambiente.insert("QT_SCALE_FACTOR", m_escala);
        ambiente.insert("HOME", m_trabalho.path());
        ambiente.insert("XDG_RUNTIME_DIR", m_trabalho.path());
        ambiente.insert("LC_ALL", "pt_BR.UTF-8");
        ambiente.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        // A desktop on which something opens every file.
        QFile abridor(m_trabalho.filePath("xdg-open"));
        if (abridor.open(QIODevice::WriteOnly)) {
            abridor.write("#!/bin/sh\nexit 0\n");
            abridor.close();
            abridor.setPermissions(abridor.permissions() | QFile::ExeOwner | QFile::ExeUser);
        }
        ambiente.insert("PATH", m_trabalho.path() + ':' + ambiente.value("PATH"));
        processo.setProcessEnvironment(ambiente);
        processo.setWorkingDirectory(m_trabalho.path());
    }

private:
    QTemporaryDir m_pasta;
    QTemporaryDir m_trabalho;
    QString m_plataforma = "offscreen";
    QString m_escala;
    QString m_erro;
};

/// A word of a script.
inline QString Palavra(QString texto)
{
    texto.replace('\\', "\\\\").replace('"', "\\\"").replace("\r\n", "\\n").replace('\n', "\\n");
    return '"' + texto + '"';
}
