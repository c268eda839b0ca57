#pragma once
// A page of a help file on white paper with black ink, whatever the palette. Nothing is read from disk or network.

#include <QHash>
#include <QImage>
#include <QTextBrowser>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "shell/ayuda/texto_plegado.h"
#include "shell/chm/chm_file.h"

class ImagenesAyuda;

class PaginaAyuda final : public QTextBrowser {
    Q_OBJECT
public:
    explicit PaginaAyuda(QWidget* padre = nullptr);

    /// Reads from this file from now on; shows nothing until `abrir`.
    void set_libro(std::shared_ptr<const tavo::chm::ChmFile> libro);
    /// Sentences in place of a page: one that the file does not have, one that cannot be read.
    std::function<QString(const QString&page)> falta, danada;

    /// Address of a page, or nothing of a name without page: "/a.html#b".
    static QUrl direccion(const QString& page);
    /// Name of the page shown, as the file spells it; empty for one that it does not have.
    QString pagina() const;

    double zoom() const { return zoom_; }
    /// Text and pictures so many times as large; the first line in sight stays in sight.
    void set_zoom(double zoom);

    /// Marks every place of these folded words and goes to the first that is in sight or below, else to the first of
    /// all; the number of places. The marks last until the next page.
    qsizetype marcar(const QStringList& words);
    /// Goes to the next marked place (1) or the one before (-1), round the ends.
    void ir_a_marca(int step);
    qsizetype marcas() const { return marcas_.size(); }
    qsizetype marca() const { return marca_; }  // the current one, from 0

    /// A copy of the page for paper, laid out for the device, with fonts and pictures in their normal size.
    std::unique_ptr<QTextDocument> copia_para(QPaintDevice* device, const QSizeF& size);

    QVariant loadResource(int type, const QUrl& name) override;
    void backward() override { emit atras_pedido(); }
    void forward() override { emit adelante_pedido(); }
    void home() override { emit portada_pedida(); }

signals:
    void atras_pedido();
    void adelante_pedido();
    void portada_pedida();
    void zoom_pedido(int steps);

protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    std::optional<std::string> leer(const QUrl& name) const;  // throws DamagedHelp
    QString texto_de_pagina(const QUrl& name) const;
    QString texto_de_estilo(const QUrl& name) const;
    QImage imagen(const QUrl& name);
    void poner_papel();
    void poner_letra();
    void poner_margenes();
    void preparar();
    void pintar_marcas();

    std::shared_ptr<const tavo::chm::ChmFile> libro_;
    QUrl actual_;
    QHash<QString, QImage> imagenes_;
    ImagenesAyuda* dibujante_;
    double zoom_ = 1.0;
    bool leida_ = false;  // the page's text has just been read
    int rueda_ = 0;       // turned with Ctrl, not yet a step
    QList<Tramo> marcas_;
    qsizetype marca_ = -1;
};
