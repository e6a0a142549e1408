#include "figure_file.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace celldesk::bench {
namespace {

QJsonValue ValueOf(const std::optional<double>& number) {
  return number ? QJsonValue(*number) : QJsonValue();
}

std::optional<double> NumberOf(const QJsonValue& value) {
  return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

QJsonObject ObjectOf(const Figure& figure) {
  return {{"name", QString::fromStdString(figure.name)},
          {"figure", figure.figure},
          {"unit", QString::fromStdString(figure.unit)},
          {"floor", ValueOf(figure.floor)},
          {"ratio", ValueOf(figure.ratio())},
          {"budget", ValueOf(figure.budget)},
          {"spread", figure.spread}};
}

Figure FigureOf(const QJsonObject& object) {
  return {object["name"].toString().toStdString(),
          object["figure"].toDouble(),
          object["unit"].toString().toStdString(),
          NumberOf(object["floor"]),
          NumberOf(object["budget"]),
          object["spread"].toDouble()};
}

}  // namespace

bool WriteFigures(const std::string& path, const Figures& figures) {
  QJsonArray array;
  for (const Figure& figure : figures) array.append(ObjectOf(figure));
  const QByteArray text = QJsonDocument(array).toJson();
  QFile file(QString::fromStdString(path));
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

std::optional<Figures> ReadFigures(const std::string& path) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
  if (!document.isArray()) return std::nullopt;
  Figures figures;
  for (const QJsonValue& value : document.array()) figures.push_back(FigureOf(value.toObject()));
  return figures;
}

}  // namespace celldesk::bench
