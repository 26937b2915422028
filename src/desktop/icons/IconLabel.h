#pragma once

#include <QLabel>
#include <QWidget>

namespace vellumo {

// A small picture beside a plain text that wraps.
class IconLabel : public QWidget {
public:
    explicit IconLabel(QWidget* parent = nullptr);

    // The picture by the name that `icon` knows.
    void setContent(const QString& pictureName, const QString& text);
    [[nodiscard]] QString text() const { return m_text->text(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    void showPicture();

    QLabel* m_picture; // both are children
    QLabel* m_text;
    QString m_pictureName;
};

} // namespace vellumo
