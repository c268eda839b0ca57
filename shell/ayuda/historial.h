#pragma once
// Pages read, with the place where each was left.

#include <QList>
#include <QUrl>

class Historial {
public:
    struct Lugar {
        QUrl address;
        int scroll = 0;
    };

    bool puede(int step) const { return at_ + step >= 0 && at_ + step < places_.size(); }
    void vaciar() { *this = Historial(); }
    /// Where the current page is left.
    void dejar(int scroll) {
        if (at_ >= 0)
            places_[at_].scroll = scroll;
    }
    /// A new page, after the current one; what lay ahead is forgotten.
    void ir(const QUrl& address) {
        places_.resize(at_ + 1);
        places_.append({address, 0});
        at_ = places_.size() - 1;
    }
    /// Back (-1) or forward (1); the caller has asked `puede`.
    const Lugar& volver(int step) { return places_[at_ += step]; }
    QUrl actual() const { return at_ < 0 ? QUrl() : places_[at_].address; }

private:
    QList<Lugar> places_;
    qsizetype at_ = -1;
};
