#pragma once

#include "store/RecordSet.h"

#include <array>
#include <memory>
#include <string_view>
#include <vector>

/**
 * What a record set holds: column names, eight bytes a value, and the texts as UTF-8 in large blocks. A
 * quarter of a million rows cost a few thousand allocations; nothing is copied when the storage grows, and a
 * text that comes again and again in a column (a kind, an origin) is stored once.
 */
struct RecordSet::Dados {
    enum class Tipo { Nulo, Inteiro, Real, Texto };

    /// 0 is NULL; else the two lowest bits tell what the others are: a whole number, the place of a text (its
    /// size in four bytes, then its bytes) or that of a number in eight bytes.
    using Celula = quint64;

    QStringList nomes;
    int linhas = 0;

    void AcrescentarNulo();
    void AcrescentarInteiro(qint64 valor);
    void AcrescentarReal(double valor);
    /// Copies the bytes. Texts of more than 4 GB cannot come out of the engine.
    void AcrescentarTexto(std::string_view utf8);
    /// Once every value of a row is there.
    void FecharLinha() { ++linhas; }

    Celula Em(int linha, int campo) const
    {
        const auto n = static_cast<std::size_t>(linha);
        return m_celulas[n / kLinhasPorBloco][(n % kLinhasPorBloco) * static_cast<std::size_t>(nomes.size()) +
                                              static_cast<std::size_t>(campo)];
    }
    static Tipo TipoDe(Celula celula);
    static qint64 Inteiro(Celula celula);
    static double Real(Celula celula);
    static std::string_view Texto(Celula celula);

private:
    static constexpr std::size_t kLinhasPorBloco = 4096;
    static constexpr int kLinhasAntesDeLembrar = 64;
    struct Lembrados {
        std::array<Celula, 256> textos{};
        int achados = 0;
        int perdidos = 0;
    };

    char *Reservar(std::size_t bytes);
    void Acrescentar(Celula celula);
    Celula GuardarTexto(std::string_view utf8);
    Celula GuardarOito(quint64 bits, Celula marca);

    std::vector<std::vector<Celula>> m_celulas; ///< blocks of rows
    int m_campo = 0;                            ///< that comes next
    std::vector<Lembrados> m_lembrados;         ///< by column, texts that came lately
    std::vector<std::unique_ptr<char[]>> m_blocos;
    char *m_livre = nullptr;
    std::size_t m_resto = 0;
};
