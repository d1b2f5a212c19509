#pragma once

#include "core/AppModel.h"
#include "ui/model/AccountPresentation.h"
#include "ui/model/DeviceListModel.h"
#include "ui/model/NodeListModel.h"
#include "ui/model/NodePresentation.h"

#include <QObject>
#include <QProperty>
#include <QVariant>

#include <optional>

namespace tarnwik {

/// The application model as QML sees it: presentations instead of records, rows instead of identifiers, `undefined`
/// for what is absent. Notifies only of what changed for QML. Lives on the main thread.
class AppModelFacade final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString serverURLString READ serverURLString WRITE setServerURLString NOTIFY serverURLStringChanged)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY isSignedInChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QVariant errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QVariant account READ accountVariant NOTIFY accountChanged)
    Q_PROPERTY(tarnwik::NodeListModel *nodes READ nodes CONSTANT)
    Q_PROPERTY(tarnwik::DeviceListModel *devices READ devices CONSTANT)
    Q_PROPERTY(int selectedNodeIndex READ selectedNodeIndex NOTIFY selectedNodeIndexChanged)
    Q_PROPERTY(QVariant selectedNode READ selectedNodeVariant NOTIFY selectedNodeChanged)
    Q_PROPERTY(QString selectedSection READ selectedSection WRITE setSelectedSection NOTIFY selectedSectionChanged)
    Q_PROPERTY(QVariantList sections READ sections CONSTANT)

public:
    /// \a model must outlive this object.
    explicit AppModelFacade(AppModel *model);

    QString serverURLString() const { return m_model->serverURLString(); }
    void setServerURLString(const QString &text) { m_model->setServerURLString(text); }

    bool isSignedIn() const { return m_isSignedIn; }
    bool isLoading() const { return m_model->isLoading(); }
    QVariant errorMessage() const;

    std::optional<AccountPresentation> account() const { return m_account; }
    NodeListModel *nodes() { return &m_nodes; }
    DeviceListModel *devices() { return &m_devices; }

    /// The row of the node that the user chose; -1 when they chose none, or one that is no longer there.
    int selectedNodeIndex() const { return m_selectedNodeIndex; }

    /// The node that a connect would go through. That may be one that nobody chose.
    std::optional<NodePresentation> selectedNode() const { return m_selectedNode; }

    /// Chooses the node of a row. A row that is not there is ignored.
    Q_INVOKABLE void selectNode(int index);

    /// A section by its raw value; one that does not exist is ignored.
    QString selectedSection() const { return m_model->selectedSection().rawValue(); }
    void setSelectedSection(const QString &rawValue);

    /// The sections in the order of the sidebar, each with `section` (its raw value), `title` and `symbol`.
    QVariantList sections() const;

    /// Starts a sign-in, which runs to its end whatever becomes of the screen.
    Q_INVOKABLE void signIn(const QString &email, const QString &password);

Q_SIGNALS:
    void serverURLStringChanged();
    void isSignedInChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void accountChanged();
    void selectedNodeIndexChanged();
    void selectedNodeChanged();
    void selectedSectionChanged();

private:
    QVariant accountVariant() const;
    QVariant selectedNodeVariant() const;
    void followModel();
    void updateAccount();
    void updateNodes();
    void updateSelectedNode();
    int indexOfSelectedNode() const;

    AppModel *m_model;
    NodeListModel m_nodes;
    DeviceListModel m_devices;

    // Declared with macros, which end without a semicolon as the moc wants it.
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModelFacade, bool, m_isSignedIn, false, &AppModelFacade::isSignedInChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModelFacade, std::optional<AccountPresentation>, m_account,
                               &AppModelFacade::accountChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModelFacade, int, m_selectedNodeIndex, -1,
                                         &AppModelFacade::selectedNodeIndexChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModelFacade, std::optional<NodePresentation>, m_selectedNode,
                               &AppModelFacade::selectedNodeChanged)
};

} // namespace tarnwik
