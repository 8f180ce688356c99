#pragma once

#include <QString>

#include <functional>

/**
 * Turns an old Access book into a book of today, in place; made for Banco::DefinirConversor().
 *
 * The old file is read completely before anything is written. The new book is written beside it and forced to
 * the disk, the old file gets a second name ("dadosr-access-original.lst", numbered when taken), and then the
 * new book takes its place in one step. A crash at any moment leaves either the old file as it was or the
 * finished new book with the old file beside it.
 */
class ConversorAccess
{
public:
    /// Told once, after a conversion, a text for the user that says what happened and where the original is.
    /// It runs inside a database operation: keep the text and show it afterwards. It must not throw.
    using AoConverter = std::function<void(const QString &mensagem)>;

    explicit ConversorAccess(AoConverter aoConverter = {});

    /**
     * Converts the file at this native path. When another copy of the program has just done it nothing
     * happens. Throws ErroBanco, with the file as it was, when it cannot be read completely, is of a kind
     * that is not read, or the new book cannot be written.
     */
    void operator()(const QString &caminho) const;

private:
    AoConverter m_aoConverter;
};
