#include "ui/model/AppModelFacade.h"

#include "async/Detach.h"
#include "ui/model/OptionalVariant.h"

#include <algorithm>

namespace tarnwik {

AppModelFacade::AppModelFacade(AppModel *model)
    : m_model(model)
{
    m_isSignedIn = m_model->isSignedIn();
    updateAccount();
    updateNodes();
    m_devices.setRecords(m_model->devices());
    followModel();
}

void AppModelFacade::followModel()
{
    QObject::connect(m_model, &AppModel::serverURLStringChanged, this, &AppModelFacade::serverURLStringChanged);
    QObject::connect(m_model, &AppModel::isLoadingChanged, this, &AppModelFacade::isLoadingChanged);
    QObject::connect(m_model, &AppModel::errorMessageChanged, this, &AppModelFacade::errorMessageChanged);
    QObject::connect(m_model, &AppModel::selectedSectionChanged, this, &AppModelFacade::selectedSectionChanged);
    QObject::connect(m_model, &AppModel::authTokenChanged, this, [this] { m_isSignedIn = m_model->isSignedIn(); });
    QObject::connect(m_model, &AppModel::accountChanged, this, &AppModelFacade::updateAccount);
    QObject::connect(m_model, &AppModel::nodesChanged, this, &AppModelFacade::updateNodes);
    QObject::connect(m_model, &AppModel::selectedNodeIDChanged, this, &AppModelFacade::updateSelectedNode);
    QObject::connect(m_model, &AppModel::devicesChanged, this, [this] { m_devices.setRecords(m_model->devices()); });
}

QVariant AppModelFacade::errorMessage() const
{
    return optionalVariant(m_model->errorMessage());
}

QVariant AppModelFacade::accountVariant() const
{
    return optionalVariant(account());
}

QVariant AppModelFacade::selectedNodeVariant() const
{
    return optionalVariant(selectedNode());
}

void AppModelFacade::updateAccount()
{
    const std::optional<Account> account = m_model->account();
    m_account = account ? std::optional<AccountPresentation>(*account) : std::nullopt;
}

void AppModelFacade::updateNodes()
{
    m_nodes.setRecords(m_model->nodes());
    updateSelectedNode();
}

void AppModelFacade::updateSelectedNode()
{
    m_selectedNodeIndex = indexOfSelectedNode();
    const std::optional<ExitNode> node = m_model->selectedNode();
    m_selectedNode = node ? std::optional<NodePresentation>(*node) : std::nullopt;
}

int AppModelFacade::indexOfSelectedNode() const
{
    const QList<ExitNode> &nodes = m_nodes.records();
    const std::optional<qint64> id = m_model->selectedNodeID();
    const auto selected =
        std::find_if(nodes.begin(), nodes.end(), [id](const ExitNode &node) { return node.id == id; });
    return selected != nodes.end() ? static_cast<int>(selected - nodes.begin()) : -1;
}

void AppModelFacade::selectNode(int index)
{
    const QList<ExitNode> &nodes = m_nodes.records();
    if (index >= 0 && index < nodes.size())
        m_model->setSelectedNodeID(nodes[index].id);
}

void AppModelFacade::setSelectedSection(const QString &rawValue)
{
    if (const std::optional<AppSection> section = AppSection::fromRawValue(rawValue))
        m_model->setSelectedSection(*section);
}

QVariantList AppModelFacade::sections() const
{
    QVariantList list;
    for (const AppSection section : AppSection::allCases) {
        list << QVariantMap{{QStringLiteral("section"), section.rawValue()},
                            {QStringLiteral("title"), section.title()},
                            {QStringLiteral("symbol"), section.systemImage()}};
    }
    return list;
}

void AppModelFacade::signIn(const QString &email, const QString &password)
{
    async::detach(m_model->signIn(email, password));
}

} // namespace tarnwik
